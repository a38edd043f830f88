#include "ui/controls/dropped_files.h"

#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

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

FileDropTarget::FileDropTarget(QWidget &widget)
    : QObject(&widget)
{
    widget.setAcceptDrops(true);
    widget.installEventFilter(this);
}

bool FileDropTarget::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);

    auto &drag = *static_cast<QDropEvent *>(event);
    const QStringList files = droppedFiles(drag.mimeData());
    drag.setAccepted(false);
    if (files.isEmpty())
        return true;
    drag.acceptProposedAction();
    if (type == QEvent::Drop)
        Q_EMIT fileDropped(files.front());
    return true;
}

} // namespace plum
