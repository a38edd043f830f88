#include "check/edition1/writing_rules.h"

#include "check/edition1/references.h"
#include "check/findings/check_words.h"
#include "check/findings/nearest_word.h"

#include <QRegularExpression>

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';
constexpr QLatin1StringView slot("+?+");
constexpr QLatin1StringView listStart("+(");

bool hasOpenQuote(const Value &value)
{
    return value.written.count(quote) % 2 != 0;
}

} // namespace

QList<Value> WritingRules::judge(int line, const QList<Value> &written)
{
    QList<Value> values = judgeQuotes(line, written);
    for (Value &value : values) {
        if (value.kind == Value::Kind::Broken)
            continue;
        judgeBlanks(line, value);
        judgeWriting(line, value);
        // Quotes inside of quotes: most likely two values that lost their comma.
        if (value.isQuoted && value.text.contains(quote))
            value.kind = Value::Kind::Broken;
    }
    return values;
}

// A quoted text that holds the separator falls into pieces that each keep one of its quotes.
QList<Value> WritingRules::judgeQuotes(int line, const QList<Value> &written)
{
    QList<Value> values;
    for (qsizetype i = 0; i < written.size(); ++i) {
        Value value = written[i];
        if (hasOpenQuote(value)) {
            qsizetype last = i + 1;
            while (last < written.size() && !hasOpenQuote(written[last]))
                ++last;
            if (value.written.trimmed().startsWith(quote) && last < written.size()) {
                m_report.add(line, value.column, u"comma-in-quotes",
                    CheckWords::tr("The comma splits this text in spite of its quotes; write _,_ for it."));
                i = last;
            } else {
                m_report.add(line, value.column, u"unpaired-quote",
                    CheckWords::tr("The quote of %1 has no partner.").arg(value.written));
            }
            value.kind = Value::Kind::Broken;
        }
        values += value;
    }
    return values;
}

// Blanks around a value can make another one of it; from here on it is what was meant.
void WritingRules::judgeBlanks(int line, Value &value)
{
    const QString trimmed = value.written.trimmed();
    if (value.isQuoted || trimmed.size() == value.written.size() || trimmed.isEmpty())
        return;
    const Value meant = valueOf(trimmed, value.column);
    const bool isAnother
        = meant.isQuoted || meant.kind == Value::Kind::Reference || meant.kind == Value::Kind::Template;
    // Blanks behind a template's list belong to nothing, those in front of its text to that.
    if (!isAnother || (value.kind == Value::Kind::Template && !value.written.startsWith(u' ')))
        return;
    m_report.add(line, value.column, u"blank-around-value",
        value.kind == Value::Kind::Template
            ? CheckWords::tr("The blank in front of %1 belongs to the text.").arg(trimmed)
            : CheckWords::tr("The blank beside %1 makes another value of it than meant.").arg(trimmed));
    value = meant;
}

void WritingRules::judgeWriting(int line, const Value &value)
{
    switch (value.kind) {
    case Value::Kind::Reference:
        judgeReference(line, value);
        return;
    case Value::Kind::Template:
        judgeTemplate(line, value);
        return;
    case Value::Kind::Empty:
    case Value::Kind::Broken:
        return;
    default:
        value.isQuoted ? judgeQuotedText(line, value) : judgeBareText(line, value);
    }
}

void WritingRules::judgeQuotedText(int line, const Value &value)
{
    const Value asReference = valueOf(value.text, value.column);
    if (value.text.contains(quote))
        m_report.add(line, value.column, u"unpaired-quote",
            CheckWords::tr("The quotes inside of %1 belong to the text; a comma may be missing.")
                .arg(value.written));
    else if (value.text.contains(slot))
        m_report.add(line, value.column, u"template-open",
            CheckWords::tr("Between quotes +?+ is a text like any other; a template stands without quotes."));
    else if (asReference.kind == Value::Kind::Reference
        && (asReference.prefix == "set"_L1 ? m_variables.isSet(asReference.name) : isReference(asReference)))
        m_report.add(line, value.column, u"quoted-reference",
            CheckWords::tr("Between quotes %1 is a text like any other; for its value leave the quotes out.")
                .arg(value.text));
}

void WritingRules::judgeBareText(int line, const Value &value)
{
    if (value.written.contains(slot) || value.written.contains(listStart)) {
        m_report.add(line, value.column, u"template-open",
            CheckWords::tr("A template ends in +(name) behind its text; this one is taken as it stands."));
        return;
    }
    if (value.written.contains(quote)) {
        m_report.add(line, value.column, u"unpaired-quote",
            CheckWords::tr("Quotes count only around the whole of a value, not inside of %1.")
                .arg(value.written));
        return;
    }
    if (value.kind != Value::Kind::Literal)
        return;
    bool isNumber = false;
    value.written.toDouble(&isNumber);
    if (isNumber)
        return;
    const QString near = nearestWord(value.prefix, referencePrefixes());
    const bool namesSomething = m_variables.isSet(value.name) || isReferenceName(value.name);
    if (!near.isEmpty() || namesSomething || value.prefix.isEmpty())
        m_report.add(line, value.column, u"unknown-prefix",
            CheckWords::tr("\"%1\" is no prefix of a reference, so %2 stands for itself.%3")
                .arg(value.prefix, value.written,
                    near.isEmpty() ? QString() : CheckWords::tr(" Did you mean \"%1.\"?").arg(near)));
    else
        m_report.add(line, value.column, u"unknown-prefix", Severity::Hint,
            CheckWords::tr("%1 stands for itself, since it has a dot; with quotes that is plain to see.")
                .arg(value.written));
}

void WritingRules::judgeReference(int line, const Value &value)
{
    if (value.prefix == "set"_L1)
        m_variables.read(value.name, line, value.column);
    else if (!isReference(value))
        m_report.add(line, value.column, u"unknown-reference",
            CheckWords::tr("There is no %1.%2; it is nothing.%3")
                .arg(value.prefix, value.name,
                    didYouMean(value.name, referenceNames(value.prefix), value.prefix + u'.')));
}

void WritingRules::judgeTemplate(int line, const Value &value)
{
    for (const Value &name : value.names) {
        if (name.kind == Value::Kind::Reference)
            judgeReference(line, name);
        else
            m_report.add(line, name.column, u"unquoted-value",
                name.written.isEmpty()
                    ? CheckWords::tr("A template's name is missing; its slot stays empty.")
                    : CheckWords::tr("%1 is no reference; its slot does not get a variable.")
                          .arg(name.written));
    }
    const bool fits = value.names.size() == 1 ? value.slotCount >= 1 : value.slotCount == value.names.size();
    if (!fits)
        m_report.add(line, value.column, u"template-slots",
            CheckWords::tr("The template has %1 slots (+?+) and %2 names.")
                .arg(value.slotCount)
                .arg(value.names.size()));
    else if (value.names.size() == 1 && value.written.contains("+?++?+"_L1))
        m_report.add(line, value.column, u"template-slots", Severity::Hint,
            CheckWords::tr("Two slots side by side are filled with the same value."));
    if (value.written.startsWith(quote) && value.written.count(quote) > 1)
        m_report.add(line, value.column, u"unpaired-quote", Severity::Hint,
            CheckWords::tr("A template stands without quotes; these belong to its text."));
}

} // namespace plum::edition1
