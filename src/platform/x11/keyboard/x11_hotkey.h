#pragma once

#include "platform/global_hotkey.h"
#include "platform/x11/keyboard/x11_key_grab.h"

#include <QTimer>

#include <memory>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace plum {

class X11Connection;
class X11Keymap;

// A key of the root window that is grabbed for this program, whatever locks are on. It follows the keyboard
// layout: the letter stays, its key may become another one.
class X11Hotkey final : public GlobalHotkey
{
    Q_OBJECT

public:
    X11Hotkey(X11Connection &connection, X11Keymap &keymap);

    bool registerHotkey(quint32 modifiers, quint32 virtualKey) override;
    void unregisterHotkey() override;
    void giveKeysTo(WindowHandle window) override;
    void takeKeysFrom(WindowHandle window) override;
    quint32 now() override;

private:
    struct Combination
    {
        quint32 modifiers;
        quint32 virtualKey;
    };

    // What the server calls a combination.
    struct Grab
    {
        xcb_keycode_t key = 0; // 0 for none
        std::vector<uint16_t> modifiers; // those of the combination with every mixture of locks

        bool operator==(const Grab &) const = default;
    };

    std::optional<Grab> find(const Combination &combination);
    bool take(const Grab &grab);
    void letGo();
    void follow();
    void answerPress(xcb_timestamp_t time);
    void makeGrab();
    void startAgain();

    X11Connection &m_connection;
    X11Keymap &m_keymap;
    std::optional<Combination> m_wanted;
    Grab m_held;
    std::unique_ptr<X11KeyGrab> m_grab;
    xcb_window_t m_clock = XCB_NONE; // a window whose changes the server stamps with its time
    std::optional<xcb_timestamp_t> m_now;
    bool m_isAnswered = false; // somebody has said where the keys go
    bool m_mustFollow = false; // the keyboard has changed and follow() is on its way
    QTimer m_guardStart;
};

} // namespace plum
