#include "ui/dropped_files.h"

#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace plum {

QStringList droppedFiles(const QMimeData *data)
{
    QStringList files;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            files += QDir::toNativeSeparators(url.toLocalFile());
    }
    return files;
}

void acceptFiles(QDropEvent &drag)
{
    if (droppedFiles(drag.mimeData()).isEmpty())
        drag.ignore();
    else
        drag.acceptProposedAction();
}

} // namespace plum
