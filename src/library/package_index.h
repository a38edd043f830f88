#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace plum {

// The SHA-256 of the package `name` in the store's index: 64 hexadecimal digits as 32 bytes. Nothing when
// the index does not name the package or is no index.
std::optional<QByteArray> packageChecksum(QByteArrayView index, const QString &name);

// How many bytes the package `name` has by the store's index; nothing when it does not say.
std::optional<qint64> packageSize(QByteArrayView index, const QString &name);

// The SHA-256 of the file at `path` (in the system's spelling); nothing when it cannot be read.
std::optional<QByteArray> fileChecksum(const QString &path);

} // namespace plum
