#include "platform/x11/x11_hotkey.h"

#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keymap.h"
#include "platform/x11/xcb_xkb.h"

#include <algorithm>
#include <array>
#include <utility>

namespace plum {

namespace {

// Every mixture of the bits of `locks`.
std::vector<uint16_t> mixtures(const std::array<uint16_t, 3> &locks)
{
    std::vector<uint16_t> all{0};
    for (const uint16_t lock : locks) {
        const size_t before = all.size();
        for (size_t i = 0; lock != 0 && i < before; ++i)
            all.push_back(static_cast<uint16_t>(all[i] | lock));
    }
    return all;
}

} // namespace

X11Hotkey::X11Hotkey(X11Connection &connection, X11Keymap &keymap)
    : m_connection(connection)
    , m_keymap(keymap)
{
    if (!m_connection.isOpen())
        return;
    // A key that is held then repeats its press alone, which tells a repetition from a second press.
    constexpr uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    m_connection.reply(xcb_xkb_per_client_flags_reply, xcb_xkb_per_client_flags, XCB_XKB_ID_USE_CORE_KBD,
        flag, flag, 0, 0, 0);
    m_connection.addReceiver([this](const xcb_generic_event_t &event) { receive(event); });
    // One change of layout comes as many events; asking the server has to wait until they are over.
    m_keymap.onChange([this] {
        if (m_wanted && !std::exchange(m_mustFollow, true))
            QMetaObject::invokeMethod(this, &X11Hotkey::follow, Qt::QueuedConnection);
    });
}

bool X11Hotkey::registerHotkey(quint32 modifiers, quint32 virtualKey)
{
    unregisterHotkey();
    const Combination combination{modifiers, virtualKey};
    const std::optional<Grab> grab = find(combination);
    if (!grab || !take(*grab))
        return false;
    m_wanted = combination;
    return true;
}

void X11Hotkey::unregisterHotkey()
{
    m_wanted.reset();
    letGo();
}

std::optional<X11Hotkey::Grab> X11Hotkey::find(const Combination &combination)
{
    if (!m_connection.isOpen() || combination.virtualKey < 'A' || combination.virtualKey > 'Z')
        return {};
    const auto key = m_keymap.existingKeyFor(static_cast<char>('a' + (combination.virtualKey - 'A')));
    if (!key)
        return {};
    Grab grab{.key = *key, .modifiers = 0, .locks = {}};
    if (combination.modifiers & Alt) {
        const uint16_t alt = m_keymap.modifierWith(XKB_KEY_Alt_L);
        grab.modifiers |= alt == 0 ? uint16_t(XCB_MOD_MASK_1) : alt;
    }
    if (combination.modifiers & Control)
        grab.modifiers |= XCB_MOD_MASK_CONTROL;
    if (combination.modifiers & Shift)
        grab.modifiers |= XCB_MOD_MASK_SHIFT;
    grab.locks = mixtures({XCB_MOD_MASK_LOCK, m_keymap.modifierWith(XKB_KEY_Num_Lock),
        m_keymap.modifierWith(XKB_KEY_Scroll_Lock)});
    return grab;
}

// All mixtures or none: a hotkey that depends on a lock would be a riddle.
bool X11Hotkey::take(const Grab &grab)
{
    std::vector<xcb_void_cookie_t> requests;
    for (const uint16_t locks : grab.locks) {
        requests.push_back(xcb_grab_key_checked(m_connection.xcb(), 0, m_connection.root(),
            static_cast<uint16_t>(grab.modifiers | locks), grab.key, XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC));
    }
    bool all = true;
    for (const xcb_void_cookie_t request : requests) {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(m_connection.xcb(), request));
        all = all && !error && m_connection.isOpen();
    }
    m_held = grab;
    if (!all)
        letGo();
    return all;
}

// Letting go of what another program holds changes nothing.
void X11Hotkey::letGo()
{
    m_isDown = false;
    const Grab held = std::exchange(m_held, {});
    if (held.key == 0 || !m_connection.isOpen())
        return;
    for (const uint16_t locks : held.locks) {
        xcb_ungrab_key(
            m_connection.xcb(), held.key, m_connection.root(), static_cast<uint16_t>(held.modifiers | locks));
    }
    m_connection.sync(); // the keys are free for others from now on
}

void X11Hotkey::follow()
{
    m_mustFollow = false;
    if (!m_wanted)
        return;
    const std::optional<Grab> grab = find(*m_wanted);
    if (grab == m_held)
        return;
    letGo();
    // A key that another program holds is asked for again at the next change.
    if (grab)
        take(*grab);
}

void X11Hotkey::receive(const xcb_generic_event_t &event)
{
    switch (event.response_type) {
    case XCB_KEY_PRESS:
        receivePress(reinterpret_cast<const xcb_key_press_event_t &>(event));
        break;
    case XCB_KEY_RELEASE:
        if (reinterpret_cast<const xcb_key_release_event_t &>(event).detail == m_held.key)
            m_isDown = false;
        break;
    default:
        break;
    }
}

void X11Hotkey::receivePress(const xcb_key_press_event_t &press)
{
    if (press.event != m_connection.root() || press.detail != m_held.key || std::exchange(m_isDown, true))
        return;
    // Events also arrive inside calls of other ports, where nobody expects a window to open.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_wanted)
                Q_EMIT fired();
        },
        Qt::QueuedConnection);
}

} // namespace plum
