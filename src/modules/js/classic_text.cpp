#include "modules/js/classic_text.h"

#include <QJSEngine>

#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostDigits = 15;

// A list of the text, or nothing when the conversion fails.
constexpr QLatin1StringView converter("(function(toText) { return function(value) { try { return "
                                      "[toText(value)]; } catch (error) { } }; })(String)");

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

ClassicText::ClassicText(QJSEngine &engine)
    : m_convert(engine.evaluate(converter))
{
}

std::optional<QString> ClassicText::of(const QJSValue &value) const
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
    if (!value.isObject())
        return value.toString();
    const QJSValue text = m_convert.call({value});
    return text.isArray() ? std::optional(text.property(0).toString()) : std::nullopt;
}

} // namespace plum
