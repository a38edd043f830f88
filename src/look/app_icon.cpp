#include "look/app_icon.h"

#include <QPainter>
#include <QPainterPath>

#include <array>

namespace plum {

namespace {

constexpr std::array iconSizes{16, 22, 24, 32, 48, 64, 128, 256};

QPixmap drawn(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 64.0, side / 64.0);
    painter.setPen(Qt::NoPen);

    QRadialGradient skin(24, 28, 40);
    skin.setColorAt(0, QColor(0xc2649f));
    skin.setColorAt(1, QColor(0x6b2159));
    painter.setBrush(skin);
    painter.drawEllipse(QRectF(8, 15, 48, 46));

    QPainterPath leaf(QPointF(32, 17));
    leaf.cubicTo(34, 6, 44, 3, 55, 4);
    leaf.cubicTo(53, 14, 44, 19, 32, 17);
    painter.setBrush(QColor(0x5f9e4f));
    painter.drawPath(leaf);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x4d1a40), 3, Qt::SolidLine, Qt::RoundCap));
    QPainterPath seam(QPointF(32, 18));
    seam.cubicTo(25, 28, 25, 44, 31, 56);
    painter.drawPath(seam);
    return pixmap;
}

} // namespace

QIcon runningIcon()
{
    QIcon icon;
    for (const int side : iconSizes) {
        QPixmap pixmap = drawn(side);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / 64.0, side / 64.0);
        painter.setPen(QPen(Qt::white, 4));
        painter.setBrush(QColor(0x2f9e44));
        painter.drawEllipse(QPointF(48, 48), 13, 13);
        icon.addPixmap(pixmap);
    }
    return icon;
}

QPixmap appPicture(int side, qreal scale)
{
    QPixmap picture = drawn(qRound(side * scale));
    picture.setDevicePixelRatio(scale);
    return picture;
}

QIcon appIcon()
{
    QIcon icon;
    for (const int side : iconSizes)
        icon.addPixmap(drawn(side));
    return icon;
}

} // namespace plum
