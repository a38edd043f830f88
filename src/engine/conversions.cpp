#include "engine/conversions.h"

#include "engine/run_time_error.h"

#include <cmath>
#include <limits>

namespace plum {

namespace {

template <typename Integer> Integer integerFrom(double value)
{
    const double rounded = roundHalfToEven(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
        throw RunTimeError(RunTimeError::Overflow, ErrorCause::OutOfRange, QString::number(value, 'g', 15));
    return static_cast<Integer>(rounded);
}

// QString's own conversion also takes "inf", "nan" and hexadecimal floats, which are no numbers in a script.
bool isDecimalNumber(QStringView text)
{
    qsizetype at = 0;
    const auto digits = [&] {
        const qsizetype from = at;
        while (at < text.size() && text[at] >= u'0' && text[at] <= u'9')
            ++at;
        return at - from;
    };
    const auto sign = [&] {
        if (at < text.size() && (text[at] == u'+' || text[at] == u'-'))
            ++at;
    };
    sign();
    qsizetype mantissa = digits();
    if (at < text.size() && text[at] == u'.') {
        ++at;
        mantissa += digits();
    }
    if (mantissa == 0)
        return false;
    if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
        ++at;
        sign();
        if (digits() == 0)
            return false;
    }
    return at == text.size();
}

} // namespace

double roundHalfToEven(double value)
{
    const double down = std::floor(value);
    const double fraction = value - down;
    if (fraction < 0.5)
        return down;
    if (fraction > 0.5)
        return down + 1;
    return std::fmod(down, 2) == 0 ? down : down + 1;
}

double toDouble(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    if (!isDecimalNumber(trimmed))
        throw RunTimeError(RunTimeError::TypeMismatch, ErrorCause::NotANumber, text.toString());
    // A number too small to hold is 0; one too large comes back infinite.
    const double value = trimmed.toDouble();
    if (!std::isfinite(value))
        throw RunTimeError(RunTimeError::Overflow, ErrorCause::OutOfRange, trimmed.toString());
    return value;
}

qint16 toInt16(QStringView text)
{
    return integerFrom<qint16>(toDouble(text));
}

qint32 toInt32(QStringView text)
{
    return integerFrom<qint32>(toDouble(text));
}

quint8 toByte(QStringView text)
{
    return integerFrom<quint8>(toDouble(text));
}

qint16 toInt16(double value)
{
    return integerFrom<qint16>(value);
}

qint32 toInt32(double value)
{
    return integerFrom<qint32>(value);
}

qint16 wrappingSum(qint16 a, qint16 b)
{
    return static_cast<qint16>(static_cast<quint16>(static_cast<quint16>(a) + static_cast<quint16>(b)));
}

quint8 hexByte(QStringView digits)
{
    const auto isHexDigit = [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    };
    if (digits.size() != 2 || !isHexDigit(digits[0]) || !isHexDigit(digits[1]))
        throw RunTimeError(RunTimeError::TypeMismatch, ErrorCause::NotHexadecimal, digits.toString());
    return static_cast<quint8>(digits.toUInt(nullptr, 16));
}

} // namespace plum
