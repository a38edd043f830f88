#pragma once

#include <QSyntaxHighlighter>

namespace plum {

class ScriptVocabulary;
struct Theme;

// Colours a script: comments, heads that the language knows and heads that it does not, texts in quotes,
// variables, and the places and lists of templates.
class ScriptHighlighter final : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    ScriptHighlighter(const ScriptVocabulary &vocabulary, QTextDocument *document);

    void setTheme(const Theme &theme);

protected:
    void highlightBlock(const QString &text) override;

private:
    const ScriptVocabulary &m_vocabulary;
    QTextCharFormat m_comment;
    QTextCharFormat m_head;
    QTextCharFormat m_unknownHead;
    QTextCharFormat m_string;
    QTextCharFormat m_variable;
    QTextCharFormat m_template;
};

} // namespace plum
