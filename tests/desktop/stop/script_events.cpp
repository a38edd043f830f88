#include "desktop/stop/script_events.h"

#include <QString>

#include <cstdlib>
#include <memory>
#include <poll.h>
#include <set>
#include <xcb/xinput.h>

namespace plum {

namespace {

// The devices of the XTEST extension, by their names.
std::set<int> devicesOfPrograms(xcb_connection_t *connection)
{
    std::set<int> devices;
    const std::unique_ptr<xcb_input_xi_query_device_reply_t, decltype(&std::free)> reply(
        xcb_input_xi_query_device_reply(
            connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL), nullptr),
        &std::free);
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        const QByteArray name(xcb_input_xi_device_info_name(each.data), each.data->name_len);
        if (name.contains("XTEST"))
            devices.insert(each.data->deviceid);
    }
    return devices;
}

} // namespace

ScriptEvents::ScriptEvents(const QString &display)
    : m_thread([this, display] { watch(display); })
{
}

ScriptEvents::~ScriptEvents()
{
    m_isOver = true;
    m_thread.join();
}

void ScriptEvents::clear()
{
    const std::scoped_lock lock(m_lock);
    m_events.clear();
}

std::vector<ScriptEvents::Event> ScriptEvents::all() const
{
    const std::scoped_lock lock(m_lock);
    return m_events;
}

void ScriptEvents::watch(const QString &display)
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> owner(
        xcb_connect(display.toLatin1().constData(), nullptr), &xcb_disconnect);
    xcb_connection_t *connection = owner.get();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    std::free(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    struct
    {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        uint32_t events = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE
            | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE
            | XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    } mask;
    xcb_input_xi_select_events(connection, root, 1, &mask.head);
    const std::set<int> ofPrograms = devicesOfPrograms(connection);
    xcb_flush(connection);
    while (!m_isOver) {
        constexpr int lookAgain = 50; // milliseconds
        pollfd descriptor{xcb_get_file_descriptor(connection), POLLIN, 0};
        poll(&descriptor, 1, lookAgain);
        while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{
            xcb_poll_for_event(connection), &std::free}) {
            if ((event->response_type & ~0x80) != XCB_GE_GENERIC)
                continue;
            const auto &raw = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(*event);
            if (!ofPrograms.contains(raw.sourceid))
                continue;
            const bool isRelease = raw.event_type == XCB_INPUT_RAW_KEY_RELEASE
                || raw.event_type == XCB_INPUT_RAW_BUTTON_RELEASE;
            const std::scoped_lock lock(m_lock);
            m_events.push_back({Clock::now(), isRelease});
        }
    }
}

} // namespace plum
