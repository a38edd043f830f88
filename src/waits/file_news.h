#pragma once

#include "platform/news.h"

#include <QFileSystemWatcher>
#include <QString>

namespace plum {

// What the system tells of a file that may not be there yet: that its folder, or the nearest one above that
// is there, has changed.
class FileNews final : public News
{
public:
    // `path` as the system writes it.
    explicit FileNews(const QString &path);

    bool arrived() override;

private:
    void watchNearestFolder();

    QString m_path;
    QFileSystemWatcher m_watcher;
    bool m_hasArrived = true;
};

} // namespace plum
