#include "platform/x11/keyboard/x11_key_grab.h"

#include "platform/linux/detached_process.h"
#include "platform/x11/keyboard/guard/words.h"
#include "platform/x11/keyboard/xcb_xkb.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace plum {

using namespace std::chrono_literals;

namespace {

// How long the user interface may take to say what it wants, and then the window to get the keyboard. A user
// waits longer for a launcher than for one that was left.
constexpr auto answerPatience = 2s;
constexpr auto givePatience = 2s;
constexpr auto takePatience = 300ms;
constexpr auto betweenLooks = 2ms;

// How often the guard hears that this still stirs while keys are kept back.
constexpr auto signOfLife = 1s;

} // namespace

X11KeyGrab::X11KeyGrab(std::function<void(xcb_timestamp_t time)> pressed, std::function<void()> lost)
    : m_pressed(std::move(pressed))
    , m_lost(std::move(lost))
{
    if (!m_connection.isOpen())
        return;
    // A key that is held then repeats its press alone, which tells a repetition from a second press.
    m_connection.reply(xcb_xkb_use_extension_reply, xcb_xkb_use_extension, 1, 0);
    constexpr uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    m_connection.reply(xcb_xkb_per_client_flags_reply, xcb_xkb_per_client_flags, XCB_XKB_ID_USE_CORE_KBD,
        flag, flag, 0, 0, 0);

    m_wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    // Signals are the business of the user interface's thread.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([this] { run(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

X11KeyGrab::~X11KeyGrab()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    wake();
    m_thread.join();
    ::close(m_wake);
    if (m_guard >= 0)
        ::close(m_guard);
}

void X11KeyGrab::startGuard()
{
    if (!m_connection.isOpen() || m_guard >= 0)
        return;
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return;
    const bool isStarted = bool(startDetached({programBeside(QStringLiteral("plum-keyguard")), {}, ends[1],
        xcb_get_file_descriptor(m_connection.xcb())}));
    ::close(ends[1]);
    if (!isStarted) {
        ::close(ends[0]);
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_guard = ends[0];
    }
    wake(); // the thread tells it how things are
}

// The guard has to know of keys that may be kept back before they can be, and of their end when it is done:
// this process may be stopped between any two steps.
void X11KeyGrab::tellGuard(char word)
{
    const Clock::time_point now = Clock::now();
    if (m_guard < 0 || (word == m_told && now - m_toldWhen < signOfLife))
        return;
    m_told = word;
    m_toldWhen = now;
    // A guard that has gone is missed by nobody until the next start.
    send(m_guard, &word, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void X11KeyGrab::wake()
{
    if (m_wake >= 0)
        eventfd_write(m_wake, 1);
}

bool X11KeyGrab::take(xcb_keycode_t key, const std::vector<uint16_t> &modifiers)
{
    if (!m_connection.isOpen())
        return false;
    // All the while: an answer brings a press along, which the thread then has to deal with.
    const std::lock_guard lock(m_mutex);
    dropKey();
    tellGuard(guard::keepsBack);
    m_key = key;
    m_modifiers = modifiers;
    std::vector<xcb_void_cookie_t> requests;
    for (const uint16_t each : modifiers) {
        requests.push_back(xcb_grab_key_checked(
            m_connection.xcb(), 0, m_connection.root(), each, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
    }
    bool all = true;
    for (const xcb_void_cookie_t request : requests) {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(m_connection.xcb(), request));
        all = all && !error && m_connection.isOpen();
    }
    if (!all)
        dropKey();
    wake();
    return all;
}

void X11KeyGrab::letGo()
{
    const std::lock_guard lock(m_mutex);
    dropKey();
}

// Letting go of what another program holds changes nothing.
void X11KeyGrab::dropKey()
{
    if (m_key == 0 || !m_connection.isOpen())
        return;
    tellGuard(guard::keepsBack);
    for (const uint16_t each : m_modifiers)
        xcb_ungrab_key(m_connection.xcb(), m_key, m_connection.root(), each);
    // A press may have frozen the keyboard without having been read yet.
    xcb_ungrab_keyboard(m_connection.xcb(), XCB_CURRENT_TIME);
    m_connection.sync(); // the keys are free for others from now on
    m_key = 0;
    m_modifiers.clear();
    m_phase = Phase::Waiting;
    wake();
}

void X11KeyGrab::giveKeysTo(xcb_window_t window)
{
    wish({.window = window, .isToHaveIt = true}, givePatience);
}

void X11KeyGrab::takeKeysFrom(xcb_window_t window)
{
    wish({.window = window, .isToHaveIt = false}, takePatience);
}

void X11KeyGrab::passKeysOn()
{
    wish({}, {});
}

void X11KeyGrab::wish(const Wish &wish, Clock::duration patience)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_phase != Phase::KeepingBack)
            return;
        m_wish = wish;
        m_deadline = Clock::now() + patience;
    }
    wake();
}

void X11KeyGrab::run()
{
    for (;;) {
        std::optional<std::chrono::milliseconds> sleep;
        {
            const std::lock_guard lock(m_mutex);
            tellGuard(guard::keepsBack);
            XcbPointer<xcb_generic_event_t> event;
            do {
                while (event.reset(xcb_poll_for_event(m_connection.xcb())), event)
                    receive(*event);
                sleep = advance();
                // A look at the server may have brought events into the queue already.
                event.reset(xcb_poll_for_queued_event(m_connection.xcb()));
                if (event)
                    receive(*event);
            } while (event);
            if (m_ends)
                return;
            if (m_phase == Phase::Waiting)
                tellGuard(guard::letsGo);
        }
        if (!m_connection.isOpen()) {
            m_lost();
            return;
        }
        std::array<pollfd, 2> descriptors{
            pollfd{xcb_get_file_descriptor(m_connection.xcb()), POLLIN, 0}, pollfd{m_wake, POLLIN, 0}};
        poll(descriptors.data(), descriptors.size(), sleep ? static_cast<int>(sleep->count()) : -1);
        eventfd_t count;
        eventfd_read(m_wake, &count);
    }
}

void X11KeyGrab::receive(const xcb_generic_event_t &event)
{
    if (event.response_type != XCB_KEY_PRESS && event.response_type != XCB_KEY_RELEASE)
        return;
    // A release has the layout of a press.
    const auto &key = reinterpret_cast<const xcb_key_press_event_t &>(event);
    const bool isPress = event.response_type == XCB_KEY_PRESS;
    if (m_phase == Phase::Waiting) {
        if (!isPress || key.detail != m_key)
            return;
        m_phase = Phase::KeepingBack;
        m_pressTime = key.time;
        m_deadline = Clock::now() + answerPatience;
        m_wish.reset();
        m_pressed(key.time);
    } else if (key.detail == m_key) {
        // The release ends it all by itself; a press is a repetition.
        if (isPress)
            allow(XCB_ALLOW_SYNC_KEYBOARD, key.time);
        else
            m_phase = Phase::Waiting;
    } else if (isPress) {
        // Typed before the key came up: it is for the window that has the keyboard, as all that follows.
        m_phase = Phase::Waiting;
        allow(XCB_ALLOW_REPLAY_KEYBOARD, key.time);
    } else {
        allow(XCB_ALLOW_SYNC_KEYBOARD, key.time);
    }
}

// A time before the last grab makes this do nothing, so it never sets free what a later press keeps back.
void X11KeyGrab::allow(xcb_allow_t mode, xcb_timestamp_t time)
{
    xcb_allow_events(m_connection.xcb(), static_cast<uint8_t>(mode), time);
    m_connection.flush();
}

// Returns how long to sleep at most; nothing for until something happens.
std::optional<std::chrono::milliseconds> X11KeyGrab::advance()
{
    if (m_phase == Phase::Waiting)
        return {};
    // Until the key is up the server keeps back each event until it is answered.
    if (m_phase == Phase::Following)
        return signOfLife;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
    if (left > 0ms && !(m_wish && isFulfilled(*m_wish)))
        return std::min<std::chrono::milliseconds>(left, m_wish ? betweenLooks : signOfLife);
    m_phase = Phase::Following;
    allow(XCB_ALLOW_SYNC_KEYBOARD, m_pressTime);
    return signOfLife;
}

bool X11KeyGrab::isFulfilled(const Wish &wish)
{
    const auto focus = m_connection.reply(xcb_get_input_focus_reply, xcb_get_input_focus);
    if (!focus)
        return true;
    const bool isWindow = focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT && focus->focus != m_connection.root();
    if (!wish.isToHaveIt)
        return isWindow && focus->focus != wish.window && !isOfManager(focus->focus);
    return isWindow && sameProgram(focus->focus, wish.window);
}

// Whether it is one of the windows in which a window manager keeps the focus while it looks for a better
// place.
bool X11KeyGrab::isOfManager(xcb_window_t window)
{
    const auto found = m_connection.reply(xcb_get_property_reply, xcb_get_property, 0, m_connection.root(),
        m_connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW, 0, 1);
    return found && xcb_get_property_value_length(found.get()) == sizeof(xcb_window_t)
        && sameProgram(window, *static_cast<const xcb_window_t *>(xcb_get_property_value(found.get())));
}

// Windows of one program differ in the low bits alone.
bool X11KeyGrab::sameProgram(xcb_window_t one, xcb_window_t other) const
{
    return ((one ^ other) & ~xcb_get_setup(m_connection.xcb())->resource_id_mask) == 0;
}

} // namespace plum
