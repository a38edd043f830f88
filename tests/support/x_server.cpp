#include "support/x_server.h"

#include <QDeadlineTimer>
#include <QProcessEnvironment>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <sys/prctl.h>
#include <xcb/xcb.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int startTime = 30'000; // milliseconds; a loaded machine takes long

void endWithParent(QProcess &process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

void stop(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(startTime)) {
        process.kill();
        process.waitForFinished(startTime);
    }
}

// Whether the root window has a property of this name.
bool rootHas(xcb_connection_t *connection, xcb_window_t root, const QByteArray &name)
{
    const auto atom = std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)>(
        xcb_intern_atom_reply(connection,
            xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr),
        &std::free);
    if (!atom)
        return false;
    const auto property = std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)>(
        xcb_get_property_reply(connection,
            xcb_get_property(connection, 0, root, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, 1), nullptr),
        &std::free);
    return property && property->type != XCB_ATOM_NONE;
}

// Waits until the window manager has said on the root window that it is there and what it can do.
bool waitForWindowManager(const QString &display)
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(display.toLatin1().constData(), nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()))
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection.get(), root, XCB_CW_EVENT_MASK, &events);

    QDeadlineTimer deadline(startTime);
    while (!xcb_connection_has_error(connection.get()) && !deadline.hasExpired()) {
        if (rootHas(connection.get(), root, "_NET_SUPPORTED")
            && rootHas(connection.get(), root, "_NET_SUPPORTING_WM_CHECK"))
            return true;
        bool changed = false;
        while (void *event = xcb_poll_for_event(connection.get())) {
            std::free(event);
            changed = true;
        }
        if (!changed) {
            pollfd descriptor{xcb_get_file_descriptor(connection.get()), POLLIN, 0};
            poll(&descriptor, 1, static_cast<int>(deadline.remainingTime()));
        }
    }
    return false;
}

} // namespace

XServer::XServer(QSize screen, const QStringList &windowManager)
{
    m_ready = startServer(screen) && (windowManager.isEmpty() || startWindowManager(windowManager));
}

XServer::~XServer()
{
    stop(m_windowManager);
    stop(m_server);
}

bool XServer::startServer(QSize screen)
{
    endWithParent(m_server);
    m_server.setStandardErrorFile(QProcess::nullDevice());
    // The server chooses a display that is free and writes its number once it takes connections.
    m_server.start(u"Xvfb"_s,
        {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s,
            u"%1x%2x24"_s.arg(screen.width()).arg(screen.height()), u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
    QByteArray number;
    while (!number.endsWith('\n') && m_server.waitForReadyRead(startTime))
        number += m_server.readAllStandardOutput();
    if (!number.endsWith('\n'))
        return false;
    m_display = u':' + QString::fromLatin1(number.trimmed());
    return true;
}

bool XServer::startWindowManager(const QStringList &windowManager)
{
    start(m_windowManager, windowManager.first(), windowManager.mid(1));
    return m_windowManager.waitForStarted(startTime) && waitForWindowManager(m_display);
}

void XServer::useAsDisplay() const
{
    qputenv("DISPLAY", m_display.toLocal8Bit());
    qunsetenv("WAYLAND_DISPLAY");
}

void XServer::start(QProcess &process, const QString &program, const QStringList &arguments) const
{
    endWithParent(process);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_display);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
}

} // namespace plum
