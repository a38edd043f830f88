#pragma once

#include "platform/wayland/connection/wayland_objects.h"

#include <QString>

#include <vector>

namespace plum {

class WaylandConnection;

// What another program has put on the clipboard.
class OfferedText
{
public:
    explicit OfferedText(zwlr_data_control_offer_v1 *offer);
    Q_DISABLE_COPY_MOVE(OfferedText)

    zwlr_data_control_offer_v1 *object() const { return m_offer.get(); }

    // The text; empty when there is none, or when its owner has not sent all of it within `milliseconds`.
    QString read(WaylandConnection &connection, int milliseconds);

private:
    WaylandOwned<zwlr_data_control_offer_v1> m_offer;
    std::vector<QByteArray> m_types;
};

} // namespace plum
