#include "ui/editing/script_highlighter.h"

#include "engine/edition2/line_reader.h"
#include "engine/edition2/own_words.h"
#include "engine/editions/later_edition.h"
#include "engine/script_vocabulary.h"
#include "look/theme.h"

#include <QRegularExpression>
#include <QTextBlock>

namespace plum {

using namespace Qt::StringLiterals;

ScriptHighlighter::ScriptHighlighter(const ScriptVocabulary &vocabulary, QTextDocument *document)
    : QSyntaxHighlighter(document)
    , m_vocabulary(vocabulary)
{
}

void ScriptHighlighter::setTheme(const Theme &theme)
{
    m_comment.setForeground(theme.comment);
    m_comment.setFontItalic(true);
    m_head.setForeground(theme.accent);
    m_head.setFontWeight(QFont::Bold);
    m_unknownHead.setForeground(theme.quiet);
    m_unknownHead.setUnderlineStyle(QTextCharFormat::DotLine);
    m_unknownHead.setUnderlineColor(theme.quiet);
    m_string.setForeground(theme.string);
    m_variable.setForeground(theme.variable);
    m_template.setForeground(theme.accent);
    rehighlight();
}

void ScriptHighlighter::highlightBlock(const QString &text)
{
    setCurrentBlockState(stateOf(text));
    if (currentBlockState() == Edition2)
        highlightEdition2(text);
    else
        highlightEdition1(text);
}

// A script asks for its edition in its first line, or in the second behind its guide.
int ScriptHighlighter::stateOf(const QString &text) const
{
    if (currentBlock().blockNumber() == 0) {
        if (askedEdition(text.toUtf8()).number == 2)
            return Edition2;
        return text.startsWith("//guide:"_L1) ? BehindGuide : Edition1;
    }
    const bool asksBehindGuide
        = previousBlockState() == BehindGuide && askedEdition(text.toUtf8()).number == 2;
    return previousBlockState() == Edition2 || asksBehindGuide ? Edition2 : Edition1;
}

void ScriptHighlighter::highlightEdition2(const QString &text)
{
    using namespace edition2;
    QList<Mistake> mistakes;
    const Line line = readLine(text, 1, mistakes);
    const auto paint = [this](int column, qsizetype length, const QTextCharFormat &format) {
        setFormat(column - 1, static_cast<int>(length), format);
    };
    if (!line.comment.isEmpty())
        setFormat(static_cast<int>(text.lastIndexOf(line.comment)), static_cast<int>(line.comment.size()),
            m_comment);
    if (line.word == Word::Comment)
        return;
    const bool known
        = ownWord(line.nameSpace, line.command) || m_vocabulary.find(line.nameSpace, line.command);
    paint(line.at.column, line.nameSpace.size() + 1 + line.command.size(), known ? m_head : m_unknownHead);
    for (const Value &value : line.values) {
        if (value.form == Form::Text || value.form == Form::Template)
            paint(value.at.column, print(value).size(), m_string);
        else if (value.form == Form::Reference)
            paint(value.at.column, value.text.size(), m_variable);
    }
}

void ScriptHighlighter::highlightEdition1(const QString &text)
{
    const auto length = static_cast<int>(text.size());
    if (text.startsWith("//"_L1)) {
        setFormat(0, length, m_comment);
        return;
    }
    const qsizetype blank = text.indexOf(u' ');
    const qsizetype headEnd = blank < 1 ? text.size() : blank;
    const bool known = m_vocabulary.knows(QStringView(text).first(headEnd));
    setFormat(0, static_cast<int>(headEnd), known ? m_head : m_unknownHead);

    static const QRegularExpression parts(
        uR"((?<string>"[^"]*"?)|(?<template>\+\?\+|\+\(|\)$)|(?<variable>\b(?:set|os|str|me|mouse)\.\w+))"_s);
    for (auto match = parts.globalMatch(text, headEnd); match.hasNext();) {
        const QRegularExpressionMatch part = match.next();
        const QTextCharFormat &format = part.hasCaptured(u"string"_s) ? m_string
            : part.hasCaptured(u"template"_s)                         ? m_template
                                                                      : m_variable;
        setFormat(static_cast<int>(part.capturedStart()), static_cast<int>(part.capturedLength()), format);
    }
}

} // namespace plum
