#include "platform/classic_number.h"

#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostDigits = 15;

} // namespace

QString classicNumber(double number)
{
    if (std::isnan(number))
        return u"-1.#IND"_s;
    if (std::isinf(number))
        return number > 0 ? u"1.#INF"_s : u"-1.#INF"_s;
    // Minus zero has no sign there.
    return number == 0 ? u"0"_s : QString::number(number, 'G', mostDigits);
}

} // namespace plum
