#include "platform/linux/message_bus.h"
#include "platform/platform.h"

#include <QFileInfo>

#include <xcb/xcb.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

bool xServerAnswers()
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return false;
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

// Accessibility and the tray icon go through the session bus, and Qt waits for its greeting without end.
void keepAwayFromSilentBus(StartEnvironment &start)
{
    constexpr int patience = 1000; // milliseconds
    if (!isSilentBus(sessionBusAddress(), patience))
        return;
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
    start.notice += u"The session bus does not answer: Plum goes without it, and without a tray icon on "
                    "desktops that need it for one."_s;
}

} // namespace

void prepareStandardStreams()
{
}

StartEnvironment prepareEnvironment(bool needsDesktop)
{
    const bool inWayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    StartEnvironment start;
    if (xServerAnswers()) {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "xcb");
        if (inWayland) {
            start.notice = u"This is a Wayland session: Plum runs on its X server and can drive only the "
                           "windows of X11 programs. "_s;
        }
        keepAwayFromSilentBus(start);
        start.notice = start.notice.trimmed();
        return start;
    }
    start.hasDesktop = false;
    if (inWayland) {
        start.notice = u"This Wayland session has no X server beside it; Plum needs one (Xwayland) to show "
                       "its windows and to drive those of other programs."_s;
    } else if (qEnvironmentVariableIsSet("DISPLAY")) {
        start.notice = u"The X server of DISPLAY=%1 does not answer."_s.arg(qEnvironmentVariable("DISPLAY"));
    } else {
        start.notice = u"There is no X server: DISPLAY is not set."_s;
    }
    if (!needsDesktop)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return start;
}

QString commandLine(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    return arguments.join(u' ');
}

} // namespace plum
