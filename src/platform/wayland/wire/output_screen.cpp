#include "platform/wayland/wire/output_screen.h"

namespace plum {

// The output at the corner where the coordinates of scripts begin; the first where none is there.
QSize OutputScreen::mainScreenSize()
{
    QSize size;
    for (const auto &output : m_connection.outputs()) {
        if (size.isEmpty() || output->area().topLeft() == QPoint())
            size = output->area().size();
    }
    return size;
}

QRect OutputScreen::desktop()
{
    return m_connection.layout();
}

// The layout has pixels of its own, whatever those of its outputs are.
qreal OutputScreen::pixelsOfUnit(const QRect &place, qreal)
{
    for (const auto &output : m_connection.outputs()) {
        if (output->area().topLeft() == place.topLeft() && !place.isEmpty())
            return qreal(output->area().width()) / place.width();
    }
    return 1;
}

bool OutputScreen::isWithinBounds(const QRect &region) const
{
    constexpr qint64 maxPixels = qint64(1) << 28;
    return !region.isEmpty() && qint64(region.width()) * region.height() <= maxPixels;
}

} // namespace plum
