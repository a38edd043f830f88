#include "check/findings/value_rules.h"

#include "check/findings/check_words.h"
#include "engine/conversions.h"
#include "engine/editions/error_words.h"
#include "engine/run_time_error.h"
#include "search/colour_text.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

std::optional<Misfit> misfitOfNumber(const QString &text, NumberWidth width, ErrorCause cause)
{
    try {
        if (width == NumberWidth::Bits16)
            toInt16(text);
        else
            toInt32(text);
    } catch (const RunTimeError &error) {
        if (error.number() == RunTimeError::Overflow)
            return Misfit{u"number-range"_s,
                (width == NumberWidth::Bits16 ? CheckWords::tr("%1, -32768 to 32767")
                                              : CheckWords::tr("%1, -2147483648 to 2147483647"))
                    .arg(errorWords(ErrorCause::OutOfRange, text))};
        return Misfit{u"wrong-value"_s, errorWords(cause, text)};
    }
    return {};
}

// "x:y" or the four numbers of a region; a text without ":" means the same number for all.
std::optional<Misfit> misfitOfNumbers(
    const QString &text, qsizetype count, NumberWidth width, ErrorCause cause)
{
    const QStringList parts = text.split(u':');
    if (parts.size() > 1 && parts.size() < count)
        return Misfit{u"wrong-value"_s, errorWords(cause, text)};
    for (const QString &part : parts.first(std::min(count, parts.size()))) {
        std::optional<Misfit> misfit = misfitOfNumber(part, width, cause);
        if (misfit && misfit->rule == "wrong-value"_L1)
            return Misfit{misfit->rule, errorWords(cause, text)};
        if (misfit)
            return misfit;
    }
    if (parts.size() > count)
        return Misfit{u"odd-value"_s, CheckWords::tr("\"%1\" has more numbers than count").arg(text)};
    return {};
}

std::optional<Misfit> misfitOfMilliseconds(const QString &text)
{
    try {
        if (toDouble(text) < 0)
            return Misfit{u"odd-value"_s, CheckWords::tr("\"%1\" is less than no time").arg(text)};
    } catch (const RunTimeError &) {
        return Misfit{u"wrong-value"_s, errorWords(ErrorCause::NotMilliseconds, text)};
    }
    return {};
}

std::optional<Misfit> misfitOfColour(const QString &text)
{
    try {
        Channels::fromText(text);
    } catch (const RunTimeError &) {
        return Misfit{u"wrong-value"_s, errorWords(ErrorCause::NotAColour, text)};
    }
    if (text.size() > 6)
        return Misfit{
            u"odd-value"_s, CheckWords::tr("\"%1\" has more than the six digits that count").arg(text)};
    return {};
}

std::optional<Misfit> misfitOfAddress(const QString &text)
{
    if (text.startsWith("http://"_L1, Qt::CaseInsensitive)
        || text.startsWith("https://"_L1, Qt::CaseInsensitive))
        return {};
    return Misfit{u"odd-value"_s, CheckWords::tr("\"%1\" does not begin with http:// or https://").arg(text)};
}

} // namespace

std::optional<Misfit> misfitOf(const Field &field, const QString &text, NumberWidth width)
{
    if (text.isEmpty())
        return {};
    switch (field.kind) {
    case FieldKind::Number:
        return misfitOfNumber(text, width, ErrorCause::NotANumber);
    case FieldKind::Handle:
        return misfitOfNumber(text, NumberWidth::Bits32, ErrorCause::NotAHandle);
    case FieldKind::Milliseconds:
        return misfitOfMilliseconds(text);
    case FieldKind::Point:
        return misfitOfNumbers(text, 2, width, ErrorCause::NotAPoint);
    case FieldKind::Offset:
        return misfitOfNumbers(text, 2, width, ErrorCause::NotAnOffset);
    case FieldKind::Region:
        return misfitOfNumbers(text, 4, NumberWidth::Bits32, ErrorCause::NotARegion);
    case FieldKind::Colour:
        return misfitOfColour(text);
    case FieldKind::Url:
        return misfitOfAddress(text);
    default:
        return {};
    }
}

} // namespace plum
