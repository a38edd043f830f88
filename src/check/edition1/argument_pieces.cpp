#include "check/edition1/argument_pieces.h"

#include "check/edition1/references.h"
#include "engine/text_functions.h"

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';
constexpr QLatin1StringView slot("+?+");
constexpr QLatin1StringView listStart("+(");

QString withCommas(QString text)
{
    return text.replace(commaEscape, u","_s);
}

Value referenceOf(const QString &token, int column)
{
    Value value{.column = column, .written = token};
    const qsizetype dot = token.indexOf(u'.');
    if (dot < 0) {
        value.kind = token.isEmpty() ? Value::Kind::Empty : Value::Kind::Nothing;
        return value;
    }
    value.prefix = token.first(dot);
    value.name = token.sliced(dot + 1);
    const bool isKnown = referencePrefixes().contains(value.prefix);
    value.kind = isKnown ? Value::Kind::Reference : Value::Kind::Literal;
    if (!isKnown)
        value.text = token;
    return value;
}

Value templateOf(const QString &written, int column)
{
    const QString piece = withCommas(written);
    Value value{.kind = Value::Kind::Template, .column = column, .written = piece};
    // Names stand where they are written, behind commas that take more room there.
    column += static_cast<int>(written.indexOf(listStart) - piece.indexOf(listStart));
    const qsizetype from = piece.indexOf(listStart) + listStart.size();
    const qsizetype to = piece.indexOf(u')', from);
    qsizetype at = from;
    for (const QString &name : piece.sliced(from, to - from).split(u'+')) {
        value.names += referenceOf(name, column + static_cast<int>(at));
        at += name.size() + 1;
    }
    // A slot that shares its "+" with the list is none.
    value.slotCount = static_cast<int>(piece.first(from - listStart.size()).count(slot));
    return value;
}

} // namespace

Value valueOf(const QString &written, int column)
{
    if (written.size() >= 1 && written.startsWith(quote) && written.endsWith(quote)) {
        const QString inner = written.size() < 2 ? QString() : written.sliced(1, written.size() - 2);
        return {.kind = Value::Kind::Literal,
            .isQuoted = true,
            .column = column,
            .written = written,
            .text = withCommas(inner)};
    }
    if (written.endsWith(u')') && written.contains(listStart))
        return templateOf(written, column);
    return referenceOf(withCommas(written), column);
}

bool Arguments::isOneQuotedText() const
{
    return text.startsWith(quote) && text.endsWith(quote) && text.count(quote) == 2;
}

QList<Value> Arguments::values(QChar separator) const
{
    if (text.isEmpty() || isOneQuotedText())
        return {whole()};
    QList<Value> found;
    qsizetype start = 0;
    const auto take = [&](qsizetype end) {
        found += valueOf(text.sliced(start, end - start), column + static_cast<int>(start));
        start = end + 1;
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (QStringView(text).sliced(at).startsWith(commaEscape))
            at += commaEscape.size() - 1;
        else if (text[at] == separator)
            take(at);
    }
    take(text.size());
    return found;
}

Value Arguments::whole() const
{
    return valueOf(text, column);
}

} // namespace plum::edition1
