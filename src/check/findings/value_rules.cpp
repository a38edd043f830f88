#include "check/findings/value_rules.h"

#include "engine/conversions.h"
#include "engine/run_time_error.h"
#include "search/colour_text.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

std::optional<Misfit> misfitOfNumber(const QString &text, NumberWidth width, const QString &what)
{
    try {
        if (width == NumberWidth::Bits16)
            toInt16(text);
        else
            toInt32(text);
    } catch (const RunTimeError &error) {
        if (error.number() == RunTimeError::Overflow)
            return Misfit{u"number-range"_s,
                width == NumberWidth::Bits16 ? u"is outside of -32768 to 32767"_s
                                             : u"is outside of -2147483648 to 2147483647"_s};
        return Misfit{u"wrong-value"_s, what};
    }
    return {};
}

// "x:y" or the four numbers of a region; a text without ":" means the same number for all.
std::optional<Misfit> misfitOfNumbers(
    const QString &text, qsizetype count, NumberWidth width, const QString &what)
{
    const QStringList parts = text.split(u':');
    if (parts.size() > 1 && parts.size() < count)
        return Misfit{u"wrong-value"_s, what};
    for (const QString &part : parts.first(std::min(count, parts.size()))) {
        if (std::optional<Misfit> misfit = misfitOfNumber(part, width, what))
            return misfit;
    }
    if (parts.size() > count)
        return Misfit{u"odd-value"_s, u"has more numbers than count"_s};
    return {};
}

std::optional<Misfit> misfitOfMilliseconds(const QString &text)
{
    try {
        if (toDouble(text) < 0)
            return Misfit{u"odd-value"_s, u"is less than no time"_s};
    } catch (const RunTimeError &) {
        return Misfit{u"wrong-value"_s, u"is not a number of milliseconds"_s};
    }
    return {};
}

std::optional<Misfit> misfitOfColour(const QString &text)
{
    try {
        Channels::fromText(text);
    } catch (const RunTimeError &) {
        return Misfit{u"wrong-value"_s, u"is not a colour of six hexadecimal digits, RRGGBB"_s};
    }
    if (text.size() > 6)
        return Misfit{u"odd-value"_s, u"has more than the six digits that count"_s};
    return {};
}

std::optional<Misfit> misfitOfAddress(const QString &text)
{
    if (text.startsWith("http://"_L1, Qt::CaseInsensitive)
        || text.startsWith("https://"_L1, Qt::CaseInsensitive))
        return {};
    return Misfit{u"odd-value"_s, u"does not begin with http:// or https://"_s};
}

} // namespace

std::optional<Misfit> misfitOf(const Field &field, const QString &text, NumberWidth width)
{
    if (text.isEmpty())
        return {};
    switch (field.kind) {
    case FieldKind::Number:
        return misfitOfNumber(text, width, u"is not a number"_s);
    case FieldKind::Handle:
        return misfitOfNumber(text, NumberWidth::Bits32, u"is not the number of a window"_s);
    case FieldKind::Milliseconds:
        return misfitOfMilliseconds(text);
    case FieldKind::Point:
        return misfitOfNumbers(text, 2, width, u"is not a point, x:y"_s);
    case FieldKind::Offset:
        return misfitOfNumbers(text, 2, width, u"is not an offset, dx:dy"_s);
    case FieldKind::Region:
        return misfitOfNumbers(text, 4, NumberWidth::Bits32, u"is not a region, x:y:width:height"_s);
    case FieldKind::Colour:
        return misfitOfColour(text);
    case FieldKind::Url:
        return misfitOfAddress(text);
    default:
        return {};
    }
}

} // namespace plum
