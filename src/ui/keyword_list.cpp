#include "ui/keyword_list.h"

#include "ui/app_faces.h"
#include "ui/controls/dropped_files.h"
#include "ui/keyword_delegate.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace plum {

namespace {

// A character that can be typed, without a modifier that makes a command of it.
bool isTyping(const QKeyEvent &event)
{
    const bool isCommand = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !isCommand && !event.text().isEmpty() && event.text().front().isPrint();
}

} // namespace

KeywordList::KeywordList(const QString &name, AppFaces &faces, QWidget *parent)
    : QListView(parent)
{
    setObjectName(name);
    setAccessibleName(tr("Apps"));
    setItemDelegate(new KeywordDelegate(faces, this));
    setUniformItemSizes(true);
    setMouseTracking(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    connect(&faces, &AppFaces::changed, viewport(), qOverload<>(&QWidget::update));
    connect(new FileDropTarget(*viewport()), &FileDropTarget::fileDropped, this, &KeywordList::fileDropped);
}

QString KeywordList::text() const
{
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : selected.front().data().toString();
}

void KeywordList::selectFirst()
{
    setCurrentIndex(model()->index(0, 0));
    scrollToTop();
}

void KeywordList::mark(const QString &keyword)
{
    if (m_marked == keyword)
        return;
    m_marked = keyword;
    viewport()->update();
}

void KeywordList::requestMenuByKey()
{
    const QRect row = visualRect(currentIndex());
    Q_EMIT menuRequested(viewport()->mapToGlobal(row.isEmpty() ? QPoint() : row.bottomLeft()));
}

void KeywordList::keyPressEvent(QKeyEvent *event)
{
    const bool isMenuKey = event->key() == Qt::Key_Menu
        || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (isMenuKey)
        requestMenuByKey();
    else if (event->key() == Qt::Key_Left)
        Q_EMIT leftPressed();
    else if (event->key() == Qt::Key_Up && currentIndex().row() <= 0)
        Q_EMIT leftAtTheTop();
    else if (event->key() == Qt::Key_F2)
        Q_EMIT renameRequested();
    else if (event->key() == Qt::Key_Delete)
        Q_EMIT deleteRequested();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT runRequested(text());
    else if (isTyping(*event))
        Q_EMIT typed(event->text());
    else
        QListView::keyPressEvent(event);
}

void KeywordList::mousePressEvent(QMouseEvent *event)
{
    // The right button acts when it is released.
    if (event->button() != Qt::RightButton)
        QListView::mousePressEvent(event);
}

void KeywordList::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::RightButton) {
        QListView::mouseReleaseEvent(event);
        return;
    }
    if (const QModelIndex under = indexAt(event->position().toPoint()); under.isValid())
        setCurrentIndex(under);
    Q_EMIT menuRequested(event->globalPosition().toPoint());
}

void KeywordList::mouseDoubleClickEvent(QMouseEvent *event)
{
    QListView::mouseDoubleClickEvent(event);
    const QModelIndex under = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && under.isValid())
        Q_EMIT editRequested(under.data().toString());
}

} // namespace plum
