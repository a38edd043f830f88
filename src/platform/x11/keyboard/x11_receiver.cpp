#include "platform/x11/keyboard/x11_receiver.h"

#include "platform/x11/connection/x11_connection.h"

#include <algorithm>
#include <span>

namespace plum {

namespace {

constexpr int glance = 5; // milliseconds between questions whether to give up
constexpr int deepestFocus = 16; // windows between the one with the focus and the program's outermost

} // namespace

X11Receiver::X11Receiver(X11Connection &connection)
    : m_connection(connection)
{
    m_connection.addReceiver([this](const xcb_generic_event_t &event) { receive(event); });
}

void X11Receiver::receive(const xcb_generic_event_t &event)
{
    constexpr uint8_t sentBit = 0x80;
    if ((event.response_type & ~sentBit) != XCB_CLIENT_MESSAGE || m_asked == 0)
        return;
    const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(event);
    if (message.type == m_connection.atom("WM_PROTOCOLS")
        && message.data.data32[0] == m_connection.atom("_NET_WM_PING"))
        m_answered = message.data.data32[3];
}

bool X11Receiver::hasWorkedOff(int milliseconds, const std::function<bool()> &isGivenUp)
{
    const xcb_window_t window = askableWindow();
    if (window == XCB_NONE)
        return false;
    // Answers go to the root window: to those who want its children's events, Qt's to those who want its own.
    const X11Watch answers(m_connection, m_connection.root(),
        XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    ++m_asked;
    xcb_client_message_event_t question{};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = window;
    question.type = m_connection.atom("WM_PROTOCOLS");
    // Without a time of its own, which programs would take over. What they do not know they send back as it
    // is.
    question.data.data32[0] = m_connection.atom("_NET_WM_PING");
    question.data.data32[2] = window;
    question.data.data32[3] = m_asked;
    xcb_send_event(
        m_connection.xcb(), 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&question));
    const auto isAnswered = [this] { return m_answered == m_asked; };
    for (int left = milliseconds; left > 0 && m_connection.isOpen() && !isGivenUp(); left -= glance) {
        if (m_connection.waitUntil(isAnswered, std::min(left, glance)))
            return true;
    }
    return false;
}

xcb_window_t X11Receiver::askableWindow()
{
    const auto focus = m_connection.reply(xcb_get_input_focus_reply, xcb_get_input_focus);
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT)
        return XCB_NONE;
    xcb_window_t window = focus->focus;
    for (int depth = 0; depth < deepestFocus && window != m_connection.root(); ++depth) {
        if (knowsTheQuestion(window))
            return window;
        const auto tree = m_connection.reply(xcb_query_tree_reply, xcb_query_tree, window);
        if (!tree || tree->parent == XCB_NONE)
            return XCB_NONE;
        window = tree->parent;
    }
    return XCB_NONE;
}

bool X11Receiver::knowsTheQuestion(xcb_window_t window)
{
    constexpr uint32_t most = 64; // atoms
    const auto protocols = m_connection.reply(xcb_get_property_reply, xcb_get_property, 0, window,
        m_connection.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM, 0, most);
    if (!protocols || protocols->format != 32)
        return false;
    const std::span known(static_cast<const xcb_atom_t *>(xcb_get_property_value(protocols.get())),
        static_cast<size_t>(xcb_get_property_value_length(protocols.get())) / sizeof(xcb_atom_t));
    return std::ranges::find(known, m_connection.atom("_NET_WM_PING")) != known.end();
}

} // namespace plum
