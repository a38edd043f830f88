#include "check/script_tokens.h"

#include "engine/edition2/fields.h"
#include "engine/edition2/own_words.h"

#include <QHash>
#include <QRegularExpression>

namespace plum::test {

using namespace Qt::StringLiterals;
using edition2::BoundValue;
using edition2::Form;
using edition2::Mistake;
using edition2::Value;

namespace {

class LineOfEdition2
{
public:
    LineOfEdition2(const QString &text, const ScriptVocabulary &vocabulary)
        : m_text(text)
        , m_line(edition2::readLine(text, 1, m_mistakes))
    {
        readHead();
        const edition2::OwnWord *own = edition2::ownWord(m_line.nameSpace, m_line.command);
        if (const CommandInfo *info = own ? &own->info : vocabulary.find(m_line.nameSpace, m_line.command))
            bind(*info);
        for (const Value &value : m_line.values) {
            takeCommas(value.at.column - 1);
            if (value.form != Form::LeftOut)
                m_at = take(value);
        }
        takeCommas(m_line.endColumn - 1);
    }

    LineTokens found;

private:
    void add(const QString &kind, qsizetype start, qsizetype length, bool isWord = false)
    {
        if (length > 0)
            found.tokens += {kind, start, length, isWord};
    }

    void addDigits(qsizetype start, qsizetype length)
    {
        for (qsizetype at = start; at < start + length; ++at)
            found.digits += at;
    }

    void addName(const QString &kind, qsizetype start, qsizetype length)
    {
        add(kind, start, length, true);
        addDigits(start, length);
    }

    void readHead()
    {
        const qsizetype start = m_line.at.column - 1;
        const qsizetype command = m_line.commandAt().column - 1;
        add(u"namespace"_s, start, m_line.nameSpace.size(), true);
        add(u"dot"_s, command - 1, 1);
        addName(m_line.nameSpace == "set"_L1 ? u"name"_s : u"command"_s, command, m_line.command.size());
        m_at = command + m_line.command.size();
        if (!m_line.values.empty())
            add(u"blank"_s, m_at, 1);
    }

    void bind(const CommandInfo &info)
    {
        const edition2::BoundLine bound = edition2::bindFields(m_line, info, m_mistakes);
        for (const auto &each : {bound.single, bound.repeated}) {
            for (const BoundValue &value : each) {
                if (value.value)
                    m_kinds.insert(value.value->at.column, value.field->kind);
            }
        }
    }

    // All that lie between here and there; the blanks beside them mean nothing.
    void takeCommas(qsizetype end)
    {
        for (; m_at < end; ++m_at) {
            if (m_text[m_at] == u',')
                add(u"comma"_s, m_at, 1);
        }
    }

    // Where the value ends.
    qsizetype take(const Value &value)
    {
        const qsizetype start = value.at.column - 1;
        switch (value.form) {
        case Form::Text:
        case Form::Template:
            return takeQuoted(start, value.form == Form::Template);
        case Form::Number:
        case Form::Coordinates:
            addDigits(start, value.text.size());
            for (qsizetype i = 0; i < value.text.size(); ++i) {
                if (value.text[i] == u':')
                    add(u"colon"_s, start + i, 1);
            }
            break;
        case Form::Reference:
            takeReference(start, value.text);
            break;
        default:
            takeWord(start, value);
        }
        return start + value.text.size();
    }

    void takeReference(qsizetype start, const QString &text)
    {
        const qsizetype dot = text.indexOf(u'.');
        add(u"prefix"_s, start, dot, true);
        add(u"dot"_s, start + dot, 1);
        addName(u"reference"_s, start + dot + 1, text.size() - dot - 1);
    }

    void takeWord(qsizetype start, const Value &value)
    {
        const FieldKind kind = m_kinds.value(value.at.column, FieldKind::Text);
        if (kind == FieldKind::Colour)
            addDigits(start, value.text.size());
        else if (kind == FieldKind::KeyList || kind == FieldKind::KeyName)
            add(u"key"_s, start, value.text.size(), true);
        else
            addName(kind == FieldKind::Variable ? u"name"_s : u"choice"_s, start, value.text.size());
    }

    qsizetype takeQuoted(qsizetype start, bool isTemplate)
    {
        qsizetype at = start;
        if (isTemplate)
            add(u"template mark"_s, at++, 1);
        add(u"quote"_s, at++, 1);
        const qsizetype content = at;
        while (m_text[at] != u'"' || (at + 1 < m_text.size() && m_text[at + 1] == u'"'))
            at += m_text[at] == u'"' ? 2 : 1;
        if (isTemplate)
            takeNames(content, at);
        else if (m_line.nameSpace == "calc"_L1)
            takeExpression(content, at);
        add(u"quote"_s, at, 1);
        return at + 1;
    }

    void takeNames(qsizetype from, qsizetype to)
    {
        static const QRegularExpression braces(u"\\{([\\w.]+)\\}"_s);
        QString content = m_text.sliced(from, to - from);
        content.replace(u"{{"_s, u"  "_s).replace(u"}}"_s, u"  "_s);
        for (auto it = braces.globalMatch(content); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            const qsizetype start = from + match.capturedStart(1);
            add(u"brace"_s, start - 1, 1);
            if (match.captured(1).contains(u'.'))
                takeReference(start, match.captured(1));
            else
                addName(u"name"_s, start, match.capturedLength(1));
            add(u"brace"_s, start + match.capturedLength(1), 1);
        }
    }

    // References, functions and numbers of an expression.
    void takeExpression(qsizetype from, qsizetype to)
    {
        static const QRegularExpression words(u"[A-Za-z_]\\w*(?:\\.\\w+)?|[0-9.]+|[-+*/%(),]"_s);
        for (auto it = words.globalMatch(m_text.sliced(from, to - from)); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            const QString word = match.captured();
            const qsizetype start = from + match.capturedStart();
            if (word[0].isDigit())
                addDigits(start, word.size());
            else if (!word[0].isLetter())
                add(u"operator"_s, start, word.size());
            else if (word.contains(u'.'))
                takeReference(start, word);
            else
                addName(u"function"_s, start, word.size());
        }
    }

    QString m_text;
    QList<Mistake> m_mistakes;
    edition2::Line m_line;
    QHash<int, FieldKind> m_kinds; // by the column of the value
    qsizetype m_at = 0;
};

} // namespace

LineTokens tokensOfEdition2(const QString &line, const ScriptVocabulary &vocabulary)
{
    return LineOfEdition2(line, vocabulary).found;
}

} // namespace plum::test
