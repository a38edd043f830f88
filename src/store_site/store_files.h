#pragma once

#include "store_index/store_index.h"

#include <QString>

#include <optional>

namespace plum {

// Replaces the file at `path` as a whole, with its folders. False with a `problem`.
bool writeFile(const QString &path, const QByteArray &content, QString &problem);

// Empty when it is not there.
QByteArray readFile(const QString &path);

// The folder of the packages in a store's folder, and the index in it that nobody has signed.
QString downloadsOf(const QString &store);
std::optional<StoreIndex> indexOf(const QString &store);

// The moment that files of now are made for: SOURCE_DATE_EPOCH where that is set, so that they can be made
// again.
QDateTime momentOfFiles();

} // namespace plum
