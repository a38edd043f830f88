#include "ui/safe_file.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace plum {

bool replaceFile(const QString &systemPath, const QByteArray &content)
{
    if (!QDir().mkpath(QFileInfo(systemPath).path()))
        return false;
    QSaveFile file(systemPath);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
}

} // namespace plum
