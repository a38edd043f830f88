#include "platform/x11/keyboard/x11_hotkey.h"

#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/keyboard/x11_keymap.h"

#include <array>
#include <chrono>
#include <utility>

namespace plum {

namespace {

// The start of the program has better things to do than starting another one.
constexpr std::chrono::milliseconds guardDelay(1000);

// `modifiers` together with every mixture of the bits of `locks`.
std::vector<uint16_t> withMixtures(uint16_t modifiers, const std::array<uint16_t, 3> &locks)
{
    std::vector<uint16_t> all{modifiers};
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
    makeGrab();
    m_guardStart.setSingleShot(true);
    m_guardStart.setInterval(guardDelay);
    connect(&m_guardStart, &QTimer::timeout, this, [this] { m_grab->startGuard(); });
    m_connection.addReceiver([this](const xcb_generic_event_t &event) {
        const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        if (event.response_type == XCB_PROPERTY_NOTIFY && change.window == m_clock)
            m_now = change.time;
    });
    // One change of layout comes as many events; asking the server has to wait until they are over.
    m_keymap.onChange([this] {
        if (m_wanted && !std::exchange(m_mustFollow, true))
            QMetaObject::invokeMethod(this, &X11Hotkey::follow, Qt::QueuedConnection);
    });
}

void X11Hotkey::makeGrab()
{
    m_grab = std::make_unique<X11KeyGrab>(
        [this](xcb_timestamp_t time) {
            QMetaObject::invokeMethod(
                this, [this, time] { answerPress(time); }, Qt::QueuedConnection);
        },
        [this] { QMetaObject::invokeMethod(this, &X11Hotkey::startAgain, Qt::QueuedConnection); });
}

// The program stood still while it kept keys back, and its guard has let them go.
void X11Hotkey::startAgain()
{
    makeGrab();
    if (!m_grab->isOpen()) // the server itself has gone
        return;
    if (const Grab held = m_held; held.key != 0)
        take(held);
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
    uint16_t modifiers = 0;
    if (combination.modifiers & Alt) {
        const uint16_t alt = m_keymap.modifierWith(XKB_KEY_Alt_L);
        modifiers |= alt == 0 ? uint16_t(XCB_MOD_MASK_1) : alt;
    }
    if (combination.modifiers & Control)
        modifiers |= XCB_MOD_MASK_CONTROL;
    if (combination.modifiers & Shift)
        modifiers |= XCB_MOD_MASK_SHIFT;
    return Grab{*key,
        withMixtures(modifiers,
            {XCB_MOD_MASK_LOCK, m_keymap.modifierWith(XKB_KEY_Num_Lock),
                m_keymap.modifierWith(XKB_KEY_Scroll_Lock)})};
}

// All mixtures or none: a hotkey that depends on a lock would be a riddle.
bool X11Hotkey::take(const Grab &grab)
{
    m_held = grab;
    if (m_grab->take(m_held.key, m_held.modifiers)) {
        m_guardStart.start();
        return true;
    }
    m_held = {};
    return false;
}

void X11Hotkey::letGo()
{
    m_grab->letGo();
    m_held = {};
}

void X11Hotkey::giveKeysTo(WindowHandle window)
{
    m_isAnswered = true;
    m_grab->giveKeysTo(static_cast<xcb_window_t>(window));
}

void X11Hotkey::takeKeysFrom(WindowHandle window)
{
    m_isAnswered = true;
    m_grab->takeKeysFrom(static_cast<xcb_window_t>(window));
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

quint32 X11Hotkey::now()
{
    if (!m_connection.isOpen())
        return 0;
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    m_clock = xcb_generate_id(m_connection.xcb());
    xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_clock, m_connection.root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(
        m_connection.xcb(), XCB_PROP_MODE_APPEND, m_clock, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
    m_now.reset();
    constexpr int patience = 1000; // milliseconds
    m_connection.waitUntil([this] { return m_now.has_value(); }, patience);
    xcb_destroy_window(m_connection.xcb(), m_clock);
    return m_now.value_or(0);
}

void X11Hotkey::answerPress(xcb_timestamp_t time)
{
    m_isAnswered = false;
    if (m_wanted)
        Q_EMIT fired(time);
    if (!m_isAnswered)
        m_grab->passKeysOn();
}

} // namespace plum
