#include "ui/lists/keyword_list.h"

#include "look/theme.h"
#include "ui/controls/dropped_files.h"
#include "ui/lists/app_faces.h"
#include "ui/lists/keyword_delegate.h"
#include "ui/lists/list_nodes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace plum {

namespace {

// A character that can be typed, without a modifier that makes a command of it.
bool isTyping(const QKeyEvent &event)
{
    const bool isCommand = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !isCommand && !event.text().isEmpty() && event.text().front().isPrint();
}

} // namespace

KeywordList::KeywordList(const QString &name, const QString &purpose, AppFaces &faces, QWidget *parent)
    : QListView(parent)
    , m_faces(faces)
{
    describeLists();
    setObjectName(name);
    setAccessibleName(purpose);
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

QString KeywordList::guideOf(const QString &keyword) const
{
    return m_faces.face(keyword, KeywordDelegate::iconSide, devicePixelRatioF()).summary;
}

// The row that the keyboard is at becomes the selected one before a key acts on it.
void KeywordList::takeCurrentRow()
{
    if (text().isEmpty() && currentIndex().isValid())
        selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
}

void KeywordList::focusInEvent(QFocusEvent *event)
{
    const bool isByTab = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByTab && !currentIndex().isValid())
        selectionModel()->setCurrentIndex(model()->index(0, 0), QItemSelectionModel::NoUpdate);
    QListView::focusInEvent(event);
}

// The rows show where the keyboard is; without rows the list does.
void KeywordList::paintEvent(QPaintEvent *event)
{
    QListView::paintEvent(event);
    if (!hasFocus() || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::of(QApplication::palette()).accent, 2));
    painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(1, 1, -1, -1), 7, 7);
}

void KeywordList::requestMenuByKey()
{
    const QRect row = visualRect(currentIndex());
    Q_EMIT menuRequested(viewport()->mapToGlobal(row.isEmpty() ? QPoint() : row.bottomLeft()));
}

void KeywordList::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isMenuKey = event->key() == Qt::Key_Menu
        || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (isMenuKey || isEnter || event->key() == Qt::Key_F2 || event->key() == Qt::Key_Delete)
        takeCurrentRow();
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
    else if (isEnter)
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
