#pragma once

#include <QStringList>

#include <optional>

namespace plum {

class Paths;
class TextCodec;

enum class ReadAllMode {
    Joined = 0, // the lines with nothing between them
    ReversedLines = 1, // the lines in reverse order, each followed by CR LF; kept: scripts rely on it
};

// Text files in the system's 8-bit encoding. A CR or a CR LF ends a line, a lone LF does not; a last line
// without an end counts. Nothing here reports an error: what cannot be read is empty. Only regular files of
// at most `largestFile` bytes are read, so that neither a pipe nor a disk image can stop the program.
class TextFiles
{
public:
    static constexpr qint64 largestFile = qint64(1) << 30;

    TextFiles(const Paths &paths, TextCodec &codec)
        : m_paths(paths)
        , m_codec(codec)
    {
    }

    // Appends the lines of the file at `path` to `list`. A file that cannot be read leaves it unchanged;
    // the result says whether the file could be read.
    bool appendLines(const QString &path, QStringList &list) const;

    QString ReadAllText(const QString &path, ReadAllMode mode) const;

    // Whether there is a file at `path` that can be read as a text.
    bool isReadable(const QString &path) const;

    // The lines of a file's bytes.
    QStringList linesOf(const QByteArray &bytes) const;

    // The bytes of the file at `path`; nothing when it cannot be read.
    std::optional<QByteArray> bytes(const QString &path) const;

    // Line `number`, counted from 1; empty when the file has no such line.
    QString ReadLine(const QString &path, qint32 number) const;

private:
    std::optional<QString> wholeText(const QString &path) const;

    const Paths &m_paths;
    TextCodec &m_codec;
};

// The lines of `text` by the rule above.
QStringList splitLines(QStringView text);

} // namespace plum
