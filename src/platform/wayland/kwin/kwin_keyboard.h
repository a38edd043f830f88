#pragma once

#include "platform/keyboard.h"
#include "platform/wayland/connection/wayland_objects.h"
#include "platform/wayland/kwin/kwin_layout.h"

#include <array>

namespace plum {

class KWinBus;
class WaylandConnection;

// The session's own keyboard: KWin takes keys for it by the kernel's numbers, and they mean what the user's
// layout says. What that layout lacks cannot be typed; a letter that it lacks is the key that has it on a US
// keyboard. Virtual keys that name no key, code 0 among them, are nothing here; ExtendedKey makes no
// difference.
class KWinKeyboard final : public Keyboard
{
public:
    KWinKeyboard(WaylandConnection &connection, KWinBus &bus);

    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void releaseAll() override;

private:
    bool isThere() const;
    void listenToLayout();
    void lookAtGroup();
    quint16 codeOf(quint8 virtualKey);
    void send(quint16 code, bool down);
    void hold(quint16 code, bool down);

    WaylandConnection &m_connection;
    KWinBus &m_bus;
    KWinLayout m_layout;
    WaylandOwned<wl_keyboard> m_keyboard; // by which KWin tells the layout
    std::array<bool, KWinLayout::codes> m_down{}; // by the kernel's number
};

} // namespace plum
