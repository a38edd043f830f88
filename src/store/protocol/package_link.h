#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace plum {

// The ending of package files.
inline constexpr QLatin1StringView packageEnding(".wfp");

// True for a name that can be a keyword wherever the store's packages go.
bool isPackageName(QStringView name);

// The name of the package that `link` leads to: a ".wfp" file below `downloadBase`, at any depth. Nothing
// for any other link. Letter case counts; a query or a fragment behind the name does not.
std::optional<QString> packageNameOf(const QUrl &link, const QUrl &downloadBase);

} // namespace plum
