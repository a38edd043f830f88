#include "ui/file_entry.h"

#include "ui/dropped_files.h"

#include <QDropEvent>
#include <QKeyEvent>

namespace plum {

FileEntry::FileEntry(const QString &name, QWidget *parent)
    : QLineEdit(parent)
{
    setObjectName(name);
    setAcceptDrops(true);
}

void FileEntry::focusAtEnd()
{
    setFocus();
    end(false);
}

void FileEntry::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Down)
        Q_EMIT downPressed();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT enterPressed();
    else
        QLineEdit::keyPressEvent(event);
}

void FileEntry::dragEnterEvent(QDragEnterEvent *event)
{
    acceptFiles(*event);
}

void FileEntry::dragMoveEvent(QDragMoveEvent *event)
{
    acceptFiles(*event);
}

void FileEntry::dropEvent(QDropEvent *event)
{
    const QStringList files = droppedFiles(event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    Q_EMIT fileDropped(files.front());
}

} // namespace plum
