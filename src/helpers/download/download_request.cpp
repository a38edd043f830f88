#include "helpers/download/download_request.h"

#include "engine/helper_programs.h"

#include <QStringList>

namespace plum {

std::optional<DownloadRequest> DownloadRequest::fromCommandLine(const QString &commandLine)
{
    const QStringList fields = commandLine.split(downloadFieldSeparator);
    const QString url = fields.value(0);
    const QString name = fields.value(2);
    if (url.isEmpty() || name.isEmpty())
        return {};
    QString folder = QString(fields.value(1)).replace(u'/', u'\\');
    while (folder.endsWith(u'\\'))
        folder.chop(1);
    const QString label = fields.value(3);
    return DownloadRequest{url, folder + u'\\' + name, label.isEmpty() ? name : label};
}

} // namespace plum
