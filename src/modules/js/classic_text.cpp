#include "modules/js/classic_text.h"

#include "platform/classic_number.h"

#include <QJSEngine>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A list of the text, or nothing when the conversion fails.
constexpr QLatin1StringView converter("(function(toText) { return function(value) { try { return "
                                      "[toText(value)]; } catch (error) { } }; })(String)");

} // namespace

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
