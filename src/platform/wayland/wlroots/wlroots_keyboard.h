#pragma once

#include "platform/keyboard.h"
#include "platform/wayland/connection/wayland_objects.h"

#include <array>
#include <span>
#include <vector>

namespace plum {

class WaylandConnection;

// A keyboard device of our own with a map of our own: what a key means does not depend on the user's layout,
// and the user's layout is left alone. Virtual keys that name no key, code 0 among them, are nothing here;
// ExtendedKey makes no difference.
class WlrootsKeyboard final : public Keyboard
{
public:
    explicit WlrootsKeyboard(WaylandConnection &connection);

    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void releaseAll() override;

private:
    struct Stroke
    {
        quint16 code;
        bool withShift;
    };

    bool sendMap();
    std::size_t makeKeysFor(std::span<const char32_t> characters);
    Stroke strokeOf(char32_t character) const;
    void send(quint16 code, bool down);
    void noteModifier(quint16 code, bool down);

    WaylandConnection &m_connection;
    WaylandOwned<zwp_virtual_keyboard_v1> m_device;
    std::vector<char32_t> m_characters; // what the spare keys mean, in their order
    std::array<bool, 256> m_down{}; // by the kernel's number
    uint32_t m_held = 0; // bits of XKB's modifiers
    uint32_t m_locked = 0;
};

} // namespace plum
