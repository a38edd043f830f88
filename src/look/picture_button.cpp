#include "look/picture_button.h"

#include "look/theme.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace plum {

namespace {

// Each picture is drawn on a square of 24 units.
QPainterPath outlineOf(PictureButton::Picture picture)
{
    QPainterPath path;
    const auto line = [&path](qreal x1, qreal y1, qreal x2, qreal y2) {
        path.moveTo(x1, y1);
        path.lineTo(x2, y2);
    };
    switch (picture) {
    case PictureButton::Picture::Back:
        line(19, 12, 5, 12);
        path.moveTo(11, 6);
        path.lineTo(5, 12);
        path.lineTo(11, 18);
        break;
    case PictureButton::Picture::Close:
        line(6.5, 6.5, 17.5, 17.5);
        line(17.5, 6.5, 6.5, 17.5);
        break;
    case PictureButton::Picture::Confirm:
        path.moveTo(5, 12.5);
        path.lineTo(10, 17.5);
        path.lineTo(19, 7);
        break;
    case PictureButton::Picture::Hotkey:
        path.addRoundedRect(QRectF(3, 6.5, 18, 11.5), 2, 2);
        line(6.5, 10.2, 7.5, 10.2);
        line(10, 10.2, 11, 10.2);
        line(13.5, 10.2, 14.5, 10.2);
        line(17, 10.2, 17.6, 10.2);
        line(8, 14.3, 16, 14.3);
        break;
    case PictureButton::Picture::Menu:
        line(5, 7.5, 19, 7.5);
        line(5, 12, 19, 12);
        line(5, 16.5, 19, 16.5);
        break;
    case PictureButton::Picture::Pick:
        path.addEllipse(QPointF(12, 12), 5.5, 5.5);
        line(12, 3, 12, 9);
        line(12, 15, 12, 21);
        line(3, 12, 9, 12);
        line(15, 12, 21, 12);
        break;
    case PictureButton::Picture::Run:
        path.moveTo(8, 5.5);
        path.lineTo(18.5, 12);
        path.lineTo(8, 18.5);
        path.closeSubpath();
        break;
    case PictureButton::Picture::Step:
        line(5, 6.5, 5, 17.5);
        line(9, 12, 19, 12);
        path.moveTo(15, 8);
        path.lineTo(19, 12);
        path.lineTo(15, 16);
        break;
    case PictureButton::Picture::Store:
        path.addRoundedRect(QRectF(4.5, 8.5, 15, 11), 2, 2);
        path.moveTo(8.5, 11.5);
        path.lineTo(8.5, 8);
        path.arcTo(QRectF(8.5, 4.5, 7, 7), 180, -180);
        path.lineTo(15.5, 11.5);
        break;
    }
    return path;
}

} // namespace

PictureButton::PictureButton(const QString &name, Picture picture, const QString &toolTip, QWidget *parent)
    : QAbstractButton(parent)
    , m_picture(picture)
{
    setObjectName(name);
    setToolTip(toolTip);
    setAccessibleName(toolTip);
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(sizeHint());
    setCursor(Qt::PointingHandCursor);
}

void PictureButton::enterEvent(QEnterEvent *event)
{
    update();
    QAbstractButton::enterEvent(event);
}

void PictureButton::leaveEvent(QEvent *event)
{
    update();
    QAbstractButton::leaveEvent(event);
}

void PictureButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void PictureButton::paintEvent(QPaintEvent *)
{
    const Theme theme = Theme::of(QApplication::palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    const bool hot = underMouse() || isDown();
    if (hot || hasFocus()) {
        painter.setPen(hasFocus() ? QPen(theme.accent, 2) : Qt::NoPen);
        painter.setBrush(hot ? QBrush(theme.hover) : Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    }

    constexpr qreal drawnSize = 20;
    painter.translate((width() - drawnSize) / 2, (height() - drawnSize) / 2);
    painter.scale(drawnSize / 24, drawnSize / 24);
    painter.setBrush(Qt::NoBrush);
    const QColor ink = hot || hasFocus() ? theme.accent : theme.quiet;
    painter.setPen(QPen(ink, 1.9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(outlineOf(m_picture));
}

} // namespace plum
