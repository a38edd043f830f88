#include "check/script_tokens.h"

#include "check/findings/words.h"

#include <QRegularExpression>

namespace plum::test {

using namespace Qt::StringLiterals;

bool isNumeric(FieldKind kind)
{
    using enum FieldKind;
    return kind == Number || kind == Milliseconds || kind == Point || kind == Offset || kind == Region
        || kind == Handle || kind == Colour;
}

namespace {

// Takes one line apart by the language's own grammar.
class Line
{
public:
    Line(const QString &text, const ScriptVocabulary &vocabulary)
        : m_text(text)
    {
        const qsizetype blank = text.indexOf(u' ');
        readHead(blank < 0 ? text : text.first(blank), vocabulary);
        if (blank < 0)
            return;
        add(u"blank"_s, blank, 1);
        m_at = blank + 1;
        readArguments();
    }

    LineTokens found;

private:
    void add(const QString &kind, qsizetype start, qsizetype length, bool isWord = false)
    {
        if (length > 0)
            found.tokens += {kind, start, length, isWord};
    }

    void readHead(const QString &head, const ScriptVocabulary &vocabulary)
    {
        const qsizetype dot = head.indexOf(u'.');
        if (dot < 0)
            return;
        const QString nameSpace = head.first(dot);
        QString word = head.sliced(dot + 1);
        add(u"namespace"_s, 0, dot, true);
        add(u"dot"_s, dot, 1);
        add(nameSpace == "set"_L1 ? u"name"_s : u"command"_s, dot + 1, word.size(), true);
        addDigits(dot + 1, word.size());
        if (!firstEditionRow(vocabulary, nameSpace, word))
            word = word.toLower();
        const CommandInfo *info = firstEditionRow(vocabulary, nameSpace, word);
        if (!info)
            return;
        for (const Field &field : info->usedFields())
            m_fields += field;
        m_takesChoiceFields = !m_fields.isEmpty() && m_fields.front().choiceCount > 0;
    }

    void addDigits(qsizetype start, qsizetype length)
    {
        for (qsizetype at = start; at < start + length; ++at)
            found.digits += at;
    }

    const Field &field() const
    {
        static constexpr Field none;
        if (m_fields.isEmpty())
            return none;
        if (m_fields.front().kind == FieldKind::KeyList)
            return m_fields.front();
        return m_field < m_fields.size() ? m_fields[m_field] : none;
    }

    void readArguments()
    {
        const bool isOneText = m_text.sliced(m_at).startsWith(u'"') && m_text.endsWith(u'"')
            && m_text.sliced(m_at).count(u'"') == 2;
        while (m_at < m_text.size()) {
            const QStringView rest = QStringView(m_text).sliced(m_at);
            if (rest.startsWith(u'"')) {
                readQuoted(isOneText);
            } else if (rest.startsWith(u',')) {
                add(u"comma"_s, m_at++, 1);
                ++m_field;
            } else if (!readTemplateToken(rest) && !readReference()) {
                ++m_at; // text of a template, or a bare text
            }
        }
    }

    bool readTemplateToken(QStringView rest)
    {
        const auto take = [this](const QString &kind, qsizetype length) {
            add(kind, m_at, length);
            m_at += length;
            return true;
        };
        if (rest.startsWith(u"+?+"))
            return take(u"slot"_s, 3);
        if (rest.startsWith(u"+(")) {
            m_inList = true;
            return take(u"list start"_s, 2);
        }
        if (m_inList && (rest.startsWith(u')')))
            return take(u"list end"_s, 1);
        if (m_inList && (rest.startsWith(u'+')))
            return take(u"list plus"_s, 1);
        return false;
    }

    bool readReference()
    {
        static const QRegularExpression pattern(
            u"\\G(?<![A-Za-z_])(os|set|str|me|mouse)\\.([A-Za-z_0-9]+)"_s);
        const auto match = pattern.match(m_text, m_at, QRegularExpression::NormalMatch);
        if (!match.hasMatch())
            return false;
        add(u"prefix"_s, match.capturedStart(1), match.capturedLength(1), true);
        add(u"dot"_s, match.capturedEnd(1), 1);
        add(u"reference"_s, match.capturedStart(2), match.capturedLength(2), true);
        addDigits(match.capturedStart(2), match.capturedLength(2));
        m_at = match.capturedEnd();
        return true;
    }

    void readQuoted(bool isOneText)
    {
        add(u"quote"_s, m_at, 1);
        const qsizetype start = m_at + 1;
        qsizetype end = m_text.indexOf(u'"', start);
        if (end < 0)
            end = m_text.size();
        takeText(start, m_text.sliced(start, end - start));
        if (end < m_text.size())
            add(u"quote"_s, end, 1);
        m_at = isOneText ? m_text.size() : end + 1;
    }

    void takeText(qsizetype start, const QString &text)
    {
        const Field &here = field();
        if (here.kind == FieldKind::KeyList || here.kind == FieldKind::KeyName) {
            add(u"key"_s, start, text.size(), true);
        } else if (here.kind == FieldKind::Variable) {
            add(u"name"_s, start, text.size(), true);
            addDigits(start, text.size());
        } else if (here.kind == FieldKind::Choice) {
            add(u"choice"_s, start, text.size(), true);
            addDigits(start, text.size());
        } else if (isNumeric(here.kind)) {
            addDigits(start, text.size());
            for (qsizetype i = 0; i < text.size(); ++i) {
                if (text[i] == u':')
                    add(u"colon"_s, start + i, 1);
            }
        }
        if (m_field == 0 && m_takesChoiceFields)
            takeFieldsOf(text);
    }

    void takeFieldsOf(const QString &word)
    {
        const Field first = m_fields.front();
        for (const CommandInfo &choice : first.choices()) {
            if (choice.word != word || choice.usedFields().empty())
                continue;
            m_fields = {first};
            for (const Field &own : choice.usedFields())
                m_fields += own;
        }
    }

    QString m_text;
    QList<Field> m_fields;
    bool m_takesChoiceFields = false;
    bool m_inList = false;
    qsizetype m_field = 0;
    qsizetype m_at = 0;
};

} // namespace

LineTokens tokensOfEdition1(const QString &line, const ScriptVocabulary &vocabulary)
{
    return Line(line, vocabulary).found;
}

} // namespace plum::test
