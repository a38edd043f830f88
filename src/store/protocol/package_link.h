#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace plum {

// The ending of package files.
inline constexpr QLatin1StringView packageEnding(".wfp");

// True for a name that can be a keyword wherever the store's packages go, and that has none of the marks that
// make a text run backwards, with which a name would look like another.
bool isPackageName(QStringView name);

// Whether `link` leads to something below `downloadBase`, where packages are and no page is.
bool isBelowDownloads(const QUrl &link, const QUrl &downloadBase);

// The name of the package that `link` leads to: a ".wfp" file below `downloadBase`, at any depth. Nothing
// for any other link, nor for one that hides slashes or dots of its path behind "%". Letter case counts; a
// query or a fragment behind the name does not.
std::optional<QString> packageNameOf(const QUrl &link, const QUrl &downloadBase);

} // namespace plum
