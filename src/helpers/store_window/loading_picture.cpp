#include "loading_picture.h"

#include <QPainter>

namespace plum {

namespace {

constexpr int side = 44; // pixels
constexpr int thickness = 4;
constexpr auto frame = std::chrono::milliseconds(40);
constexpr int step = 14; // degrees a frame
constexpr int partLength = 90; // degrees
constexpr int unit = 16; // QPainter counts sixteenths of a degree

} // namespace

LoadingPicture::LoadingPicture(QColor ring, QColor part, QWidget *parent)
    : QWidget(parent)
    , m_ring(ring)
    , m_part(part)
{
    setFixedSize(side, side);
    m_turning.setInterval(frame);
    connect(&m_turning, &QTimer::timeout, this, [this] {
        m_angle = (m_angle + step) % 360;
        update();
    });
}

void LoadingPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect circle = rect().adjusted(thickness, thickness, -thickness, -thickness);
    painter.setPen(QPen(m_ring, thickness));
    painter.drawEllipse(circle);
    painter.setPen(QPen(m_part, thickness, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -m_angle * unit, partLength * unit);
}

void LoadingPicture::showEvent(QShowEvent *)
{
    m_turning.start();
}

void LoadingPicture::hideEvent(QHideEvent *)
{
    m_turning.stop();
}

} // namespace plum
