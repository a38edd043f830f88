#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace plum {

class TextCodec;

// A script's file as it was read, so that saving it changes those lines alone that the user changed. The
// editor shows more line ends than a run knows (a bare line feed, U+2029): here they are told apart.
class ScriptFile
{
public:
    // A file that is not there yet.
    ScriptFile() = default;
    ScriptFile(const QByteArray &bytes, TextCodec &codec);

    // What the editor shows: the lines with CR LF between them.
    QString shown() const;

    // How many lines end in something that ends no line of a run.
    int oddLineEnds() const;

    // The line of a run, from 1, that a line of the editor, from 0, is a part of; and the first of its parts.
    int runLineOf(int shown) const;
    int shownLineOf(int runLine) const;

    enum class LineEnds {
        Kept,
        Mended, // every line ends in CR LF
    };

    // The file with the editor's lines. A line that was there keeps its bytes and its end, a new one ends in
    // CR LF, and the last one ends as the last one did.
    QByteArray withText(const QString &shown, LineEnds lineEnds, TextCodec &codec) const;

    // The same as a text, without a mark.
    QString textWith(const QString &shown, LineEnds lineEnds) const;

private:
    struct Line
    {
        QString text;
        QByteArray bytes;
        QByteArray end; // empty for a last line without one
    };

    // A line of the editor's text on its way into the file.
    struct Written
    {
        QString text;
        const Line *kept = nullptr; // the line that it was, if it is unchanged
        QByteArray end;
    };

    bool endsLineOfRun(const Line &line) const;
    QList<Written> written(const QString &shown, LineEnds lineEnds) const;
    void split(const QByteArray &bytes, TextCodec &codec);
    QByteArray encoded(const QString &text, TextCodec &codec) const;

    // For each of `texts` the number of the line that it was, or -1.
    QList<qsizetype> origins(const QStringList &texts) const;

    QList<Line> m_lines;
    QByteArray m_mark; // of the encoding, in front of everything
    bool m_lineFeedsEndLines = false; // as they do from edition 2 of the language on
};

} // namespace plum
