#include "store/protocol/package_link.h"

#include "library/keyword_rules.h"

#include <QStringList>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

bool turnsText(QChar c)
{
    return c.direction() == QChar::DirRLO || c.direction() == QChar::DirLRO || c.direction() == QChar::DirRLE
        || c.direction() == QChar::DirLRE || c.direction() == QChar::DirPDF || c.direction() == QChar::DirRLI
        || c.direction() == QChar::DirLRI || c.direction() == QChar::DirFSI || c.direction() == QChar::DirPDI;
}

// A part of a path that means the same before and after it is decoded.
bool isPlainSegment(const QString &encoded)
{
    const QString decoded = QUrl::fromPercentEncoding(encoded.toLatin1());
    return !decoded.contains(u'/') && !decoded.contains(u'\\') && decoded != "."_L1 && decoded != ".."_L1;
}

} // namespace

bool isPackageName(QStringView name)
{
    return keywordFault(name, FileNames::Kept) == KeywordFault::None
        && std::none_of(name.cbegin(), name.cend(), [](QChar c) { return turnsText(c); });
}

bool isBelowDownloads(const QUrl &link, const QUrl &downloadBase)
{
    // Resolving ".." first: what only pretends to lie below the base does not.
    const QUrl target = link.adjusted(QUrl::NormalizePathSegments);
    const int anyPort = -1;
    return target.scheme() == downloadBase.scheme() && target.host() == downloadBase.host()
        && target.port(anyPort) == downloadBase.port(anyPort)
        && target.path(QUrl::FullyDecoded).startsWith(downloadBase.path(QUrl::FullyDecoded));
}

std::optional<QString> packageNameOf(const QUrl &link, const QUrl &downloadBase)
{
    if (!isBelowDownloads(link, downloadBase) || !link.userInfo().isEmpty())
        return std::nullopt;
    const QStringList segments
        = link.adjusted(QUrl::NormalizePathSegments).path(QUrl::FullyEncoded).split(u'/');
    if (!std::ranges::all_of(segments, isPlainSegment))
        return std::nullopt;

    QString name = QUrl::fromPercentEncoding(segments.last().toLatin1());
    if (!name.endsWith(packageEnding))
        return std::nullopt;
    name.chop(packageEnding.size());
    if (!isPackageName(name))
        return std::nullopt;
    return name;
}

} // namespace plum
