#include "ui/controls/file_entry.h"

#include "look/placeholder_ink.h"
#include "ui/controls/dropped_files.h"

#include <QKeyEvent>

namespace plum {

FileEntry::FileEntry(const QString &name, QWidget *parent)
    : QLineEdit(parent)
{
    setObjectName(name);
    keepPlaceholderReadable(*this);
    connect(new FileDropTarget(*this), &FileDropTarget::fileDropped, this, &FileEntry::fileDropped);
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

} // namespace plum
