#include "modules/js/classic_text.h"

#include <QJSValue>

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

std::optional<QString> classicText(const QJSValue &value)
{
    if (value.isNull())
        return std::nullopt;
    if (value.isUndefined())
        return QString();
    if (value.isBool())
        return value.toBool() ? u"True"_s : u"False"_s;
    if (value.isNumber())
        return classicNumber(value.toNumber());
    if (value.isError())
        return u"[object Error]"_s;
    return value.toString();
}

} // namespace plum
