#include "store_index/json_fields.h"

#include "store_index/public_key.h"

#include <QJsonDocument>

#include <cmath>
#include <limits>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView momentFormat("yyyy-MM-dd'T'HH:mm:ss'Z'");
constexpr int checksumLength = 32; // bytes
constexpr double largestExact = 9007199254740992.0; // 2^53

std::optional<double> wholeNumber(const QJsonObject &object, QLatin1StringView name, double from, double to)
{
    const QJsonValue value = object.value(name);
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < from || number > to || std::floor(number) != number)
        return std::nullopt;
    return number;
}

} // namespace

std::optional<QJsonObject> objectOfType(const QByteArray &json, QLatin1StringView type)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject() || document.object().value("type"_L1).toString() != type)
        return std::nullopt;
    return document.object();
}

std::optional<int> countField(const QJsonObject &object, QLatin1StringView name)
{
    const auto number = wholeNumber(object, name, 1, std::numeric_limits<int>::max());
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::optional<qint64> sizeField(const QJsonObject &object, QLatin1StringView name)
{
    const auto number = wholeNumber(object, name, 0, largestExact);
    return number ? std::optional(static_cast<qint64>(*number)) : std::nullopt;
}

std::optional<QDateTime> momentField(const QJsonObject &object, QLatin1StringView name)
{
    const QString text = object.value(name).toString();
    QDateTime moment = QDateTime::fromString(text, momentFormat);
    if (!moment.isValid())
        return std::nullopt;
    moment.setTimeSpec(Qt::UTC);
    if (momentText(moment) != text)
        return std::nullopt;
    return moment;
}

QString momentText(const QDateTime &moment)
{
    return moment.toUTC().toString(momentFormat);
}

std::optional<QByteArray> checksumField(const QJsonObject &object, QLatin1StringView name)
{
    return exactHex(object.value(name).toString().toLatin1(), checksumLength);
}

QByteArray fileText(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

} // namespace plum
