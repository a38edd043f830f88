#pragma once

#include <QDateTime>
#include <QJsonObject>

#include <optional>

namespace plum {

// Fields of the store's files, each of exactly one type: what is of another type is not there.

// The object that `json` is; nothing when it is none, or not that of a file of this type (its field "type").
std::optional<QJsonObject> objectOfType(const QByteArray &json, QLatin1StringView type);

// A whole number from 1 to 2^31 - 1.
std::optional<int> countField(const QJsonObject &object, QLatin1StringView name);

// A whole number of bytes, from 0 to 2^53.
std::optional<qint64> sizeField(const QJsonObject &object, QLatin1StringView name);

// A moment as "2026-11-21T08:00:00Z".
std::optional<QDateTime> momentField(const QJsonObject &object, QLatin1StringView name);
QString momentText(const QDateTime &moment);

// The SHA-256 of something: 64 hexadecimal digits as 32 bytes.
std::optional<QByteArray> checksumField(const QJsonObject &object, QLatin1StringView name);

// What a file's object looks like in the file: the same bytes for the same fields.
QByteArray fileText(const QJsonObject &object);

} // namespace plum
