#pragma once

#include "published_app.h"
#include "store_index/store_index.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace plum {

// What a store has after another build, and which files that takes.
struct NextIndex
{
    StoreIndex index;
    std::vector<std::pair<QString, QByteArray>> files; // packages that move, below the folder of the packages
    QStringList withdrawn; // packages that lie there and are named no more
    QStringList problems; // apps that stay as they were, a line each
};

// The index that follows on `before` with these apps, each of which is given its version: the one that its
// about.json says, else the number after the one before. What is not the newest any more is kept as an older
// version, in a place of its own; `packageAt` gives the bytes of the packages as they lie now. A name in
// `unpublished` is an app that is there and cannot be published this time: it stays as it is.
NextIndex nextIndex(const StoreIndex &before, std::vector<PublishedApp> &apps, const QStringList &unpublished,
    const std::function<QByteArray(const QString &path)> &packageAt);

} // namespace plum
