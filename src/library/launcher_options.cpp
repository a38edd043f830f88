#include "library/launcher_options.h"

#include "library/app_folders.h"
#include "library/settings_file.h"

#include <QFile>

namespace plum {

LauncherOptions readLauncherOptions(const Paths &paths, TextCodec &codec)
{
    const AppFolders folders(paths);
    QFile file(folders.onDisk(folders.loadFile(QStringLiteral("options.ini"))));
    LauncherOptions options;
    if (!file.open(QIODevice::ReadOnly))
        return options;
    const QString order = profileValue(file.readAll(), u"list", u"order", codec);
    if (order.compare(u"recent", Qt::CaseInsensitive) == 0)
        options.order = ListOrder::Recent;
    return options;
}

bool wantsPictures(const Paths &paths, TextCodec &codec)
{
    const QString pictures = SettingsFile::options(paths, codec)
                                 .ReadSetting(QStringLiteral("recorder"), QStringLiteral("pictures"));
    return pictures.compare(u"on", Qt::CaseInsensitive) == 0;
}

} // namespace plum
