#include "library/safe_file.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace plum {

bool replaceFile(const QString &systemPath, const QByteArray &content)
{
    if (!QDir().mkpath(QFileInfo(systemPath).path()))
        return false;
    QSaveFile file(systemPath);
    // Committing would not notice that the rest of a buffer found no room on the disk.
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush()
        && file.commit();
}

} // namespace plum
