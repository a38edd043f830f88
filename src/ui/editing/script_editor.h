#pragma once

#include <QPlainTextEdit>

namespace plum {

class ScriptHighlighter;
class ScriptVocabulary;
struct Theme;

// The script editor `Text4`. Its lines end in CR LF wherever its text leaves it.
class ScriptEditor final : public QPlainTextEdit
{
    Q_OBJECT

public:
    ScriptEditor(const ScriptVocabulary &vocabulary, QWidget *parent);

    QString script() const;
    void setScript(const QString &text);

    // Adds one line behind the text.
    void appendScriptLine(const QString &line);

    void setTheme(const Theme &theme);

    // What an empty editor shows as a beginning, and what Tab then inserts.
    static QString beginning();

Q_SIGNALS:
    void filesDropped(const QStringList &paths);

protected:
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    bool focusNextPrevChild(bool next) override;

private:
    ScriptHighlighter *m_highlighter;
};

} // namespace plum
