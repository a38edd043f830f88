#pragma once

#include "platform/screen.h"
#include "platform/wayland/connection/wayland_connection.h"

namespace plum {

// What every compositor tells of its screens in the same way: where its outputs lie. Scripts count in the
// pixels of that layout.
class OutputScreen : public Screen
{
public:
    QSize mainScreenSize() final;
    QRect desktop() final;
    qreal pixelsOfUnit(const QRect &place, qreal ratio) final;

protected:
    explicit OutputScreen(WaylandConnection &connection)
        : m_connection(connection)
    {
    }

    // Whether the port captures such a region at all.
    bool isWithinBounds(const QRect &region) const;
    WaylandConnection &connection() const { return m_connection; }

private:
    WaylandConnection &m_connection;
};

} // namespace plum
