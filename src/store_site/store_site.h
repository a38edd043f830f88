#pragma once

#include "published_app.h"

#include <QString>

#include <utility>
#include <vector>

namespace plum {

// All files of a store: their paths on the web site, without a "/" in front, and what is in them.
using SiteFiles = std::vector<std::pair<QString, QByteArray>>;

// `downloadBase` is put in front of the packages' file names in the pages: an address or a path on the site.
SiteFiles buildSite(const std::vector<PublishedApp> &apps, const QString &downloadBase);

} // namespace plum
