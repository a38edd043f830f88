#pragma once

#include "platform/clipboard.h"
#include "platform/wayland/clipboard/offered_text.h"

#include <memory>

namespace plum {

class WaylandConnection;

// The clipboard through the compositor's control of it, which needs no window with the keyboard, as Qt's
// does. Other programs are served from the event loop.
class WaylandClipboard final : public Clipboard
{
    Q_OBJECT

public:
    explicit WaylandClipboard(WaylandConnection &connection);

    QString text() override;
    void setText(const QString &text) override;
    void clear() override;
    std::optional<quint64> timesTaken() const override { return m_timesTaken; }
    void outliveProcess() override;

private:
    void take(std::unique_ptr<OfferedText> offer);
    void lose(zwlr_data_control_source_v1 *source);

    WaylandConnection &m_connection;
    WaylandOwned<zwlr_data_control_device_v1> m_device;
    WaylandOwned<zwlr_data_control_source_v1> m_source; // set while the clipboard's text is ours
    QByteArray m_text; // of the source
    quint64 m_timesTaken = 0;
    std::unique_ptr<OfferedText> m_arriving; // announced, and not yet the clipboard's
    std::unique_ptr<OfferedText> m_offer;
    QObject m_senders; // parent of what serves other programs
};

} // namespace plum
