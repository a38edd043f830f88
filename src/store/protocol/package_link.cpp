#include "store/protocol/package_link.h"

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

bool isPackageName(QStringView name)
{
    constexpr QStringView forbidden = u"\\/:*?\"<|>";
    const auto isForbidden = [&](QChar c) { return c < u' ' || forbidden.contains(c); };
    return !name.isEmpty() && name != "."_L1 && name != ".."_L1
        && std::none_of(name.cbegin(), name.cend(), isForbidden);
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
