#include "platform/wayland/wayland_keyboard.h"

#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/event_time.h"
#include "platform/wayland/key_table.h"

#include <QThread>

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

namespace plum {

namespace {

// The compositor takes the state of the modifiers from whoever plugs the keyboard in.
struct Modifier
{
    quint16 code;
    uint32_t bit;
    bool locks; // changes with a press and not with the release
};

constexpr std::array modifiers{Modifier{42, 1, false}, Modifier{54, 1, false}, Modifier{58, 2, true},
    Modifier{29, 4, false}, Modifier{97, 4, false}, Modifier{56, 8, false}, Modifier{100, 8, false},
    Modifier{69, 16, true}, Modifier{125, 64, false}, Modifier{126, 64, false}};

// How long programs may take to listen to the first keyboard of a seat that had none.
constexpr unsigned long settleTime = 300; // milliseconds

} // namespace

WaylandKeyboard::WaylandKeyboard(WaylandConnection &connection)
    : m_connection(connection)
{
    if (!m_connection.isOpen() || !m_connection.virtualKeyboards())
        return;
    const bool isFirst = !(m_connection.seatCapabilities() & WL_SEAT_CAPABILITY_KEYBOARD);
    m_device.reset(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(
        m_connection.virtualKeyboards(), m_connection.seat()));
    sendMap();
    m_connection.roundTrip();
    if (isFirst)
        QThread::msleep(settleTime);
}

void WaylandKeyboard::sendMap()
{
    const QByteArray text = keymapText(m_characters);
    const auto size = static_cast<size_t>(text.size()) + 1; // with the zero at its end
    const int file = memfd_create("plum-keymap", MFD_CLOEXEC);
    if (file < 0)
        return;
    if (write(file, text.constData(), size) == static_cast<ssize_t>(size)) {
        zwp_virtual_keyboard_v1_keymap(
            m_device.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file, static_cast<uint32_t>(size));
        m_connection.flush(); // which sends the file, too
    }
    close(file);
    zwp_virtual_keyboard_v1_modifiers(m_device.get(), m_held, 0, m_locked, 0);
}

void WaylandKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    const TableKey *key = tableKey(virtualKey);
    if (!m_device || !key)
        return;
    send(key->code, !(flags & KeyUp));
    m_connection.flush();
}

// A key that is not down is released all the same, and one that is down goes down again, as the calls of a
// script say.
void WaylandKeyboard::send(quint16 code, bool down)
{
    zwp_virtual_keyboard_v1_key(m_device.get(), eventTime(), code,
        down ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    m_down[code] = down;
    noteModifier(code, down);
}

void WaylandKeyboard::noteModifier(quint16 code, bool down)
{
    const auto changed = std::ranges::find(modifiers, code, &Modifier::code);
    if (changed == modifiers.end())
        return;
    if (changed->locks) {
        if (down)
            m_locked ^= changed->bit;
    } else {
        m_held = 0;
        for (const Modifier &modifier : modifiers) {
            if (!modifier.locks && m_down[modifier.code])
                m_held |= modifier.bit;
        }
    }
    zwp_virtual_keyboard_v1_modifiers(m_device.get(), m_held, 0, m_locked, 0);
}

void WaylandKeyboard::releaseAll()
{
    if (!m_device)
        return;
    for (size_t code = 0; code < m_down.size(); ++code) {
        if (m_down[code])
            send(static_cast<quint16>(code), false);
    }
    m_connection.flush();
}

} // namespace plum
