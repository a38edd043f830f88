#include "helpers/download/download_request.h"

#include "archive/extraction_folder.h"
#include "engine/helper_programs.h"
#include "platform/paths.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

std::optional<DownloadRequest> DownloadRequest::fromCommandLine(const QString &commandLine)
{
    const QStringList fields = commandLine.split(downloadFieldSeparator);
    const QString url = fields.value(0);
    if (url.isEmpty() || fields.size() < 3)
        return {};
    QString name = QString(fields.value(2)).replace(u'/', u'\\');
    if (name.isEmpty())
        name = fileNameFor(url);
    QString folder = QString(fields.value(1)).replace(u'/', u'\\');
    while (folder.endsWith(u'\\'))
        folder.chop(1);
    const QString label = fields.value(3);
    return DownloadRequest{
        .url = url, .target = folder + u'\\' + name, .label = label.isEmpty() ? name : label, .name = name};
}

bool DownloadRequest::staysInFolder(const Paths &paths) const
{
    return staysInside(name, paths.interpretsNames()) && !name.endsWith(u'\\');
}

QString fileNameFor(const QString &url)
{
    const QString trimmed = url.trimmed();
    const QUrl address(trimmed.contains("://"_L1) ? trimmed : "http://"_L1 + trimmed);
    const QStringList parts = address.path(QUrl::FullyDecoded).split(u'/', Qt::SkipEmptyParts);
    QString name = parts.isEmpty() ? address.host() : parts.last();
    constexpr auto forbidden = "\\/:*?\"<>|"_L1;
    std::ranges::replace_if(
        name, [forbidden](QChar c) { return c < u' ' || forbidden.contains(c); }, u'_');
    const bool isUsable = std::ranges::any_of(name, [](QChar c) { return c != u'.' && c != u' '; });
    return isUsable ? name : u"download"_s;
}

} // namespace plum
