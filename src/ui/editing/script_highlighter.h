#pragma once

#include <QSyntaxHighlighter>

namespace plum {

class ScriptVocabulary;
struct Theme;

// Colours a script: comments, heads that its edition of the language knows and heads that it does not, texts
// in quotes, variables, and the places and lists of templates.
class ScriptHighlighter final : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    ScriptHighlighter(const ScriptVocabulary &vocabulary, QTextDocument *document);

    void setTheme(const Theme &theme);

protected:
    void highlightBlock(const QString &text) override;

private:
    // What is known of a line's edition; the state of its block.
    enum State {
        Edition1,
        BehindGuide,
        Edition2,
    };

    int stateOf(const QString &text) const;
    void highlightEdition1(const QString &text);
    void highlightEdition2(const QString &text);

    const ScriptVocabulary &m_vocabulary;
    QTextCharFormat m_comment;
    QTextCharFormat m_head;
    QTextCharFormat m_unknownHead;
    QTextCharFormat m_string;
    QTextCharFormat m_variable;
    QTextCharFormat m_template;
};

} // namespace plum
