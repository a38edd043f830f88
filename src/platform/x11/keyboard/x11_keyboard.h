#pragma once

#include "platform/keyboard.h"
#include "platform/x11/keyboard/x11_keymap.h"

#include <array>

namespace plum {

class X11Connection;

// Key events through the XTEST extension. Virtual keys without a symbol on X11, code 0 among them, are
// nothing here; ExtendedKey makes no difference, since X11 has a symbol for either twin of a key. A call
// comes back when the server has carried the event out: what waited in the socket would still be played after
// a stop.
class X11Keyboard final : public Keyboard
{
public:
    X11Keyboard(X11Connection &connection, X11Keymap &keymap);

    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void setStop(const StopSignal *stop) override { m_keymap.setStop(stop); }
    void releaseAll() override;

private:
    void press(quint8 virtualKey);
    void release(quint8 virtualKey);
    void send(const X11Keymap::Stroke &stroke);
    void fake(quint8 type, xcb_keycode_t key);

    X11Connection &m_connection;
    X11Keymap &m_keymap;
    // The key that went down for each virtual key and did not come up yet; 0 for none. A layout that changes
    // in between must not leave it down.
    std::array<xcb_keycode_t, 256> m_down{};
};

} // namespace plum
