#include "platform/choice/desktop_choice.h"
#include "platform/linux/message_bus.h"
#include "platform/linux/platform_module.h"
#include "platform/platform.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

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

bool isInWayland()
{
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

QString missingDesktop(DesktopKind kind)
{
    if (kind == DesktopKind::Wayland) {
        return isInWayland() ? u"The Wayland compositor of WAYLAND_DISPLAY=%1 does not answer."_s.arg(
                   qEnvironmentVariable("WAYLAND_DISPLAY"))
                             : u"There is no Wayland compositor: WAYLAND_DISPLAY is not set."_s;
    }
    if (isInWayland()) {
        return u"This Wayland session has no X server beside it; Plum needs one (Xwayland) to show "
               "its windows and to drive those of other programs."_s;
    }
    if (qEnvironmentVariableIsSet("DISPLAY"))
        return u"The X server of DISPLAY=%1 does not answer."_s.arg(qEnvironmentVariable("DISPLAY"));
    return u"There is no X server: DISPLAY is not set."_s;
}

} // namespace

void prepareStandardStreams()
{
}

TalkFiles takeStandardStreams()
{
    constexpr int lowest = 3; // behind the standard streams
    const TalkFiles files{
        fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, lowest), fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, lowest)};
    if (const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC); nothing >= 0) {
        dup2(nothing, STDIN_FILENO);
        close(nothing);
    }
    dup2(STDERR_FILENO, STDOUT_FILENO);
    // Who listened may be gone; that must not end the process with keys down.
    std::signal(SIGPIPE, SIG_IGN);
    return files;
}

StartEnvironment prepareEnvironment(bool needsDesktop)
{
    const DesktopKind kind = chosenDesktop();
    PlatformModule *backend = backendFor(kind);
    StartEnvironment start;
    if (!backend || !backend->hasDesktop()) {
        start.hasDesktop = false;
        start.notice = missingDesktop(kind);
        if (!needsDesktop)
            qputenv("QT_QPA_PLATFORM", "offscreen");
        return start;
    }
    // Qt takes the X server beside the session where its own part for Wayland is not installed.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", kind == DesktopKind::Wayland ? "wayland;xcb" : "xcb");
    if (kind == DesktopKind::X11 && isInWayland()) {
        start.notice = u"This is a Wayland session: Plum runs on its X server and can drive only the "
                       "windows of X11 programs. "_s;
    }
    keepAwayFromSilentBus(start);
    start.notice = start.notice.trimmed();
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
