#include "engine/edition2/line_reader.h"

#include "engine/editions/mistake_words.h"

#include <algorithm>
#include <optional>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView slashes = u"//";

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

char32_t characterAt(QStringView text, qsizetype at)
{
    const bool isPair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(text[at], text[at + 1]) : text[at].unicode();
}

// Letters of any script, with the marks that some write their vowels with, digits and "_".
bool standsInWord(char32_t c)
{
    return c == U'_' || QChar::isLetter(c) || QChar::isDigit(c) || QChar::isMark(c);
}

bool isWordText(QStringView text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char32_t c = characterAt(text, at);
        if (!standsInWord(c))
            return false;
        at += QChar::requiresSurrogates(c) ? 1 : 0;
    }
    return !text.isEmpty();
}

bool isReference(QStringView text)
{
    const qsizetype dot = text.indexOf(u'.');
    return dot > 0 && isName(text.first(dot)) && isName(text.sliced(dot + 1));
}

class LineReader
{
public:
    LineReader(QStringView text, int number, QList<Mistake> &mistakes)
        : m_text(text)
        , m_number(number)
        , m_mistakes(mistakes)
    {
        while (!m_text.isEmpty() && isBlank(m_text.back()))
            m_text.chop(1);
    }

    Line read()
    {
        skipBlanks();
        m_line.at = here();
        if (!atEnd() && !atComment()) {
            readHead();
            skipBlanks();
            readArguments();
        }
        if (atComment())
            m_line.comment = m_text.sliced(m_at).toString();
        return m_line;
    }

private:
    Position at(qsizetype index) const { return {m_number, int(index) + 1}; }
    Position here() const { return at(m_at); }
    bool atEnd() const { return m_at >= m_text.size(); }

    bool atComment() const
    {
        return m_text.sliced(m_at).startsWith(slashes) && (m_at == 0 || isBlank(m_text[m_at - 1]));
    }

    void skipBlanks()
    {
        while (!atEnd() && isBlank(m_text[m_at]))
            ++m_at;
    }

    void fail(qsizetype index, const QString &reason) { m_mistakes += {at(index), reason}; }

    void readHead()
    {
        const qsizetype from = m_at;
        while (!atEnd() && !isBlank(m_text[m_at]))
            ++m_at;
        m_line.endColumn = here().column;
        const QStringView head = m_text.sliced(from, m_at - from);
        const qsizetype dot = head.indexOf(u'.');
        m_line.word = Word::Command;
        m_line.nameSpace = (dot < 0 ? head : head.first(dot)).toString();
        if (dot >= 0)
            m_line.command = head.sliced(dot + 1).toString();
        if (dot <= 0 || dot + 1 == head.size())
            fail(from,
                MistakeWords::tr("a line begins with a command like os.tips, not with \"%1\"").arg(head));
    }

    void readArguments()
    {
        bool isDue = false; // a comma stands before
        while (!atEnd() && !atComment()) {
            if (m_text[m_at] == u',') {
                m_line.values.push_back({Form::LeftOut, {}, {}, here()});
                step();
                isDue = true;
                continue;
            }
            std::optional<Value> value = readValue();
            if (!value) {
                m_at = m_text.size();
                return;
            }
            m_line.endColumn = here().column;
            m_line.values.push_back(std::move(*value));
            skipBlanks();
            isDue = !atEnd() && !atComment();
            if (!isDue)
                break;
            if (m_text[m_at] != u',') {
                fail(m_at, MistakeWords::tr("a comma belongs between two arguments"));
                m_at = m_text.size();
                return;
            }
            step();
        }
        if (isDue)
            m_line.values.push_back({Form::LeftOut, {}, {}, {m_number, m_line.endColumn}});
    }

    // Past a comma and the blanks behind it.
    void step()
    {
        ++m_at;
        m_line.endColumn = here().column;
        skipBlanks();
    }

    std::optional<Value> readValue()
    {
        if (m_text[m_at] == u'"')
            return readText();
        if (m_text.sliced(m_at).startsWith(u"$\""))
            return readTemplate();
        return readBare();
    }

    // The content between quotes, of which two stand for one.
    std::optional<QString> readQuoted()
    {
        const qsizetype from = m_at++;
        QString content;
        for (;;) {
            const qsizetype quote = m_text.indexOf(u'"', m_at);
            if (quote < 0) {
                fail(from, MistakeWords::tr("this quote is not closed"));
                return {};
            }
            content += m_text.sliced(m_at, quote - m_at);
            m_at = quote + 1;
            if (atEnd() || m_text[m_at] != u'"')
                return content;
            content += u'"';
            ++m_at;
        }
    }

    std::optional<Value> readText()
    {
        const Position start = here();
        std::optional<QString> content = readQuoted();
        if (!content)
            return {};
        return Value{Form::Text, std::move(*content), {}, start};
    }

    std::optional<Value> readTemplate()
    {
        const qsizetype from = m_at;
        Value value{Form::Template, {}, {}, here()};
        ++m_at;
        const std::optional<QString> content = readQuoted();
        if (!content || !readChunks(*content, from, value.chunks))
            return {};
        return value;
    }

    // Where a character of a template's content stands in the line: behind $ and a quote, with every quote in
    // front of it written twice.
    static int columnInTemplate(QStringView content, qsizetype from, qsizetype index)
    {
        return int(from + 2 + index + content.first(index).count(u'"')) + 1;
    }

    bool readChunks(QStringView content, qsizetype from, std::vector<Chunk> &chunks)
    {
        QString plain;
        const auto endPlain = [&] {
            if (!plain.isEmpty())
                chunks.push_back({std::exchange(plain, {}), false});
        };
        for (qsizetype index = 0; index < content.size(); ++index) {
            const QChar c = content[index];
            const bool isDouble = index + 1 < content.size() && content[index + 1] == c;
            if (c != u'{' && c != u'}') {
                plain += c;
            } else if (isDouble) {
                plain += c;
                ++index;
            } else if (c == u'}') {
                fail(from, MistakeWords::tr("a brace closes that never opened; }} stands for a brace"));
                return false;
            } else {
                const qsizetype end = content.indexOf(u'}', index);
                const QStringView name = end < 0 ? QStringView() : content.sliced(index + 1, end - index - 1);
                if (!isName(name) && !isReference(name)) {
                    fail(from, MistakeWords::tr("a name belongs between braces; {{ stands for a brace"));
                    return false;
                }
                endPlain();
                chunks.push_back({name.toString(), true, columnInTemplate(content, from, index + 1)});
                index = end;
            }
        }
        endPlain();
        return true;
    }

    std::optional<Value> readBare()
    {
        const qsizetype from = m_at;
        while (!atEnd() && m_text[m_at] != u',' && !atComment()) {
            if (m_text[m_at] == u'"') {
                fail(m_at, MistakeWords::tr("a text begins and ends with a quote, or with $ and a quote"));
                return {};
            }
            ++m_at;
        }
        QStringView text = m_text.sliced(from, m_at - from);
        while (isBlank(text.back()))
            text.chop(1);
        m_at = from + text.size();
        const std::optional<Form> form = formOf(text);
        if (!form) {
            fail(from,
                MistakeWords::tr("\"%1\" is no number, point, reference or word; a text stands in quotes")
                    .arg(text));
            return {};
        }
        return Value{*form, text.toString(), {}, at(from)};
    }

    static std::optional<Form> formOf(QStringView text)
    {
        if (isNumber(text))
            return Form::Number;
        if (areCoordinates(text, 2) || areCoordinates(text, 4))
            return Form::Coordinates;
        if (isWordText(text))
            return Form::Word;
        if (isReference(text))
            return Form::Reference;
        return {};
    }

    QStringView m_text;
    int m_number;
    QList<Mistake> &m_mistakes;
    qsizetype m_at = 0;
    Line m_line;
};

} // namespace

Line readLine(QStringView text, int number, QList<Mistake> &mistakes)
{
    return LineReader(text, number, mistakes).read();
}

bool isName(QStringView text)
{
    if (!isWordText(text))
        return false;
    const char32_t first = characterAt(text, 0);
    return !QChar::isDigit(first) && !QChar::isMark(first);
}

bool isNumber(QStringView text)
{
    if (text.startsWith(u'-'))
        text = text.sliced(1);
    const qsizetype dot = text.indexOf(u'.');
    const auto areDigits
        = [](QStringView digits) { return !digits.isEmpty() && std::ranges::all_of(digits, isDigit); };
    return areDigits(dot < 0 ? text : text.first(dot)) && (dot < 0 || areDigits(text.sliced(dot + 1)));
}

bool areCoordinates(QStringView text, int count)
{
    int found = 0;
    for (const QStringView part : text.tokenize(u':')) {
        if (++found > count || !isNumber(part) || part.contains(u'.'))
            return false;
    }
    return found == count;
}

} // namespace plum::edition2
