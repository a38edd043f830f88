#include "ui/editing/script_highlighter.h"

#include "engine/script_vocabulary.h"
#include "look/theme.h"

#include <QRegularExpression>

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
