#pragma once

#include <QString>

namespace plum {

// Text and numbers as scripts mean them. A text is a number when, blanks around it aside, it is a decimal
// number with an optional sign, fraction and exponent ("12", "-0.5", "1e3"). Fractions round to the nearest
// integer, halves to the even one. Anything else raises a type mismatch (13); a number outside the result's
// range raises an overflow (6).
qint16 toInt16(QStringView text);
qint32 toInt32(QStringView text);
quint8 toByte(QStringView text);
double toDouble(QStringView text);

qint16 toInt16(double value);
qint32 toInt32(double value);

// The sum in 16 bits, wrapping around as the coordinates of points do.
qint16 wrappingSum(qint16 a, qint16 b);

// 0 to 255 from two hexadecimal digits; a type mismatch for anything else.
quint8 hexByte(QStringView digits);

// The nearest integer, halves to the even one.
double roundHalfToEven(double value);

} // namespace plum
