#include "platform/wayland/wlroots/wlroots_keyboard.h"

#include "platform/typed_text.h"
#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/wire/event_time.h"
#include "platform/wayland/wire/key_table.h"

#include <QScopeGuard>
#include <QThread>

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

namespace plum {

namespace {

constexpr uint32_t shiftBit = 1;
constexpr uint32_t capsLockBit = 2;

// The compositor takes the state of the modifiers from whoever plugs the keyboard in.
struct Modifier
{
    quint16 code;
    uint32_t bit;
    bool locks; // changes with a press and not with the release
};

constexpr std::array modifiers{Modifier{42, shiftBit, false}, Modifier{54, shiftBit, false},
    Modifier{58, capsLockBit, true}, Modifier{29, 4, false}, Modifier{97, 4, false}, Modifier{56, 8, false},
    Modifier{100, 8, false}, Modifier{69, 16, true}, Modifier{125, 64, false}, Modifier{126, 64, false}};

constexpr std::size_t spareKeys = lastSpareCode - firstSpareCode + 1;
constexpr std::size_t typedAtOnce = 64; // characters

// The key that has `character` on every map of ours: letters, digits, and what no character is. The spare
// ones have the others.
const TableKey *fixedKey(char32_t character)
{
    if (character == U'\n')
        return tableKey('\r');
    if (character >= U'a' && character <= U'z')
        return tableKey(static_cast<quint8>(character - U'a' + U'A'));
    const bool isOwnNumber = character == U'\t' || character == U' '
        || (character >= U'0' && character <= U'9') || (character >= U'A' && character <= U'Z');
    return isOwnNumber ? tableKey(static_cast<quint8>(character)) : nullptr;
}

// How long programs may take to listen to the first keyboard of a seat that had none.
constexpr unsigned long settleTime = 300; // milliseconds

} // namespace

WlrootsKeyboard::WlrootsKeyboard(WaylandConnection &connection)
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

bool WlrootsKeyboard::sendMap()
{
    const QByteArray text = keymapText(m_characters);
    const auto size = static_cast<size_t>(text.size()) + 1; // with the zero at its end
    const int file = memfd_create("plum-keymap", MFD_CLOEXEC);
    if (file < 0)
        return false;
    const bool isWritten = write(file, text.constData(), size) == static_cast<ssize_t>(size);
    if (isWritten) {
        zwp_virtual_keyboard_v1_keymap(
            m_device.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file, static_cast<uint32_t>(size));
        m_connection.flush(); // which sends the file, too
    }
    close(file);
    zwp_virtual_keyboard_v1_modifiers(m_device.get(), m_held, 0, m_locked, 0);
    return isWritten;
}

void WlrootsKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    const TableKey *key = tableKey(virtualKey);
    if (!m_device || !key)
        return;
    send(key->code, !(flags & KeyUp));
    m_connection.roundTrip();
}

// A key that is not down is released all the same, and one that is down goes down again, as the calls of a
// script say.
void WlrootsKeyboard::send(quint16 code, bool down)
{
    zwp_virtual_keyboard_v1_key(m_device.get(), eventTime(), code,
        down ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    m_down[code] = down;
    noteModifier(code, down);
}

void WlrootsKeyboard::noteModifier(quint16 code, bool down)
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

// Programs get a new map in its turn among the keys, so nobody has to be waited for.
bool WlrootsKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    if (!m_device)
        return text.isEmpty();
    const TypedText wanted = charactersOf(text);
    for (std::span<const char32_t> left = wanted.characters; !left.empty();) {
        const std::size_t ready = makeKeysFor(left.first(std::min(left.size(), typedAtOnce)));
        if (ready == 0)
            return false;
        const auto leave = qScopeGuard(
            [this] { zwp_virtual_keyboard_v1_modifiers(m_device.get(), m_held, 0, m_locked, 0); });
        for (const char32_t character : left.first(ready)) {
            before();
            const Stroke stroke = strokeOf(character);
            // Caps Lock does not count.
            zwp_virtual_keyboard_v1_modifiers(
                m_device.get(), m_held | (stroke.withShift ? shiftBit : 0U), 0, m_locked & ~capsLockBit, 0);
            send(stroke.code, true);
            send(stroke.code, false);
            m_connection.roundTrip();
        }
        left = left.subspan(ready);
    }
    return wanted.isWhole;
}

// Returns how many of them, from the first one on, have keys now.
std::size_t WlrootsKeyboard::makeKeysFor(std::span<const char32_t> characters)
{
    std::vector<char32_t> needed;
    std::size_t ready = 0;
    for (const char32_t character : characters) {
        if (!fixedKey(character) && std::ranges::count(needed, character) == 0) {
            if (needed.size() == spareKeys)
                break;
            needed.push_back(character);
        }
        ++ready;
    }
    std::vector<char32_t> missing;
    std::ranges::copy_if(needed, std::back_inserter(missing),
        [this](char32_t character) { return std::ranges::count(m_characters, character) == 0; });
    if (missing.empty())
        return ready;
    if (m_characters.size() + missing.size() <= spareKeys)
        m_characters.insert(m_characters.end(), missing.begin(), missing.end());
    else
        m_characters = needed;
    return sendMap() ? ready : 0;
}

WlrootsKeyboard::Stroke WlrootsKeyboard::strokeOf(char32_t character) const
{
    if (const TableKey *key = fixedKey(character))
        return {key->code, character >= U'A' && character <= U'Z'};
    const auto at = std::ranges::find(m_characters, character) - m_characters.begin();
    return {static_cast<quint16>(firstSpareCode + at), false};
}

void WlrootsKeyboard::releaseAll()
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
