#pragma once

#include "published_app.h"
#include "store_index/store_index.h"

#include <QString>

#include <utility>
#include <vector>

namespace plum {

// All files of a store: their paths on the web site, without a "/" in front, and what is in them.
using SiteFiles = std::vector<std::pair<QString, QByteArray>>;

// The folder of the packages on the site.
inline constexpr QLatin1StringView downloadFolder("plum/download/");
inline constexpr QLatin1StringView unsignedIndexFile("index.json");

// `downloadBase` is put in front of the packages' paths in the pages: an address or a path on the site.
// `index` names the apps, their older versions and what was taken back.
SiteFiles buildSite(
    const std::vector<PublishedApp> &apps, const StoreIndex &index, const QString &downloadBase);

} // namespace plum
