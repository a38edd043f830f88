#include "platform/x11/x11_session.h"

#include "platform/x11/connection/x11_connection.h"

#include <xcb/dpms.h>

namespace plum {

Session::Outcome X11Session::monitorOff()
{
    if (!m_connection.isOpen())
        return Outcome::Unavailable;
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(m_connection.xcb(), &xcb_dpms_id);
    if (!extension || !extension->present)
        return Outcome::Unavailable;
    const auto capable = m_connection.reply(xcb_dpms_capable_reply, xcb_dpms_capable);
    if (!capable || !capable->capable)
        return Outcome::Unavailable;
    xcb_dpms_enable(m_connection.xcb());
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(
        m_connection.xcb(), xcb_dpms_force_level_checked(m_connection.xcb(), XCB_DPMS_DPMS_MODE_OFF)));
    return error ? Outcome::Unavailable : Outcome::Done;
}

} // namespace plum
