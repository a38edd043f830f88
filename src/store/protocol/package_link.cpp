#include "store/protocol/package_link.h"

#include "library/keyword_rules.h"

namespace plum {

using namespace Qt::StringLiterals;

bool isPackageName(QStringView name)
{
    return keywordFault(name, FileNames::Kept) == KeywordFault::None;
}

std::optional<QString> packageNameOf(const QUrl &link, const QUrl &downloadBase)
{
    // Resolving ".." first: what only pretends to lie below the base does not.
    const QUrl target = link.adjusted(QUrl::NormalizePathSegments);
    const int anyPort = -1;
    if (target.scheme() != downloadBase.scheme() || target.host() != downloadBase.host()
        || target.port(anyPort) != downloadBase.port(anyPort))
        return std::nullopt;

    const QString path = target.path(QUrl::FullyDecoded);
    if (!path.startsWith(downloadBase.path(QUrl::FullyDecoded)) || !path.endsWith(packageEnding))
        return std::nullopt;
    QString name = path.sliced(path.lastIndexOf(u'/') + 1);
    name.chop(packageEnding.size());
    if (!isPackageName(name))
        return std::nullopt;
    return name;
}

} // namespace plum
