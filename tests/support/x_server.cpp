#include "support/x_server.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <poll.h>
#include <sys/prctl.h>
#include <xcb/xcb.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int startTime = 60'000; // milliseconds; a loaded machine takes long

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

// The first value of a window's property of 32-bit values; nothing when it has no such property.
std::optional<uint32_t> firstValue(xcb_connection_t *connection, xcb_window_t window, const QByteArray &name)
{
    const auto atom = std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)>(
        xcb_intern_atom_reply(connection,
            xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr),
        &std::free);
    if (!atom)
        return {};
    const auto property = std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)>(
        xcb_get_property_reply(connection,
            xcb_get_property(connection, 0, window, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, 1), nullptr),
        &std::free);
    if (!property || xcb_get_property_value_length(property.get()) < 4)
        return {};
    return *static_cast<const uint32_t *>(xcb_get_property_value(property.get()));
}

// Sleeps until the server has sent something, unless it has already, and takes it.
void awaitEvents(xcb_connection_t *connection, int milliseconds)
{
    const auto take = [connection] {
        bool any = false;
        while (void *event = xcb_poll_for_event(connection)) {
            std::free(event);
            any = true;
        }
        return any;
    };
    xcb_flush(connection);
    if (take())
        return;
    pollfd descriptor{xcb_get_file_descriptor(connection), POLLIN, 0};
    poll(&descriptor, 1, milliseconds);
    take();
}

// Waits until the window manager has said on the root window that it is there and what it can do, and until
// it has taken a window under its care: while it comes up, it loses one now and then.
bool waitForWindowManager(const QString &display)
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> owner(
        xcb_connect(display.toLatin1().constData(), nullptr), &xcb_disconnect);
    xcb_connection_t *connection = owner.get();
    if (xcb_connection_has_error(connection))
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &events);

    constexpr int lookAgain = 500; // milliseconds
    const QDeadlineTimer deadline(startTime);
    const auto goesOn = [&] { return !xcb_connection_has_error(connection) && !deadline.hasExpired(); };
    while (!firstValue(connection, root, "_NET_SUPPORTED")
        || !firstValue(connection, root, "_NET_SUPPORTING_WM_CHECK")) {
        if (!goesOn())
            return false;
        awaitEvents(connection, lookAgain);
    }

    const xcb_window_t trial = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, trial, root, 0, 0, 10, 10, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    // A window that wants no input is not given the keyboard, so nothing of it stays behind.
    const std::array<uint32_t, 9> noInput{1, 0};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, trial, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32,
        static_cast<uint32_t>(noInput.size()), noInput.data());
    while (!firstValue(connection, trial, "WM_STATE")) {
        if (!goesOn())
            return false;
        xcb_map_window(connection, trial);
        awaitEvents(connection, lookAgain);
    }
    xcb_destroy_window(connection, trial);
    while (firstValue(connection, root, "_NET_CLIENT_LIST") == trial) {
        if (!goesOn())
            return false;
        awaitEvents(connection, lookAgain);
    }
    return true;
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

qsizetype XServer::processes(const QByteArray &program) const
{
    const QByteArray here = "DISPLAY=" + m_display.toLatin1() + '\0';
    return std::ranges::count_if(QDir(u"/proc"_s).entryList(QDir::Dirs), [&](const QString &process) {
        QFile name(u"/proc/%1/comm"_s.arg(process));
        QFile environment(u"/proc/%1/environ"_s.arg(process));
        return name.open(QFile::ReadOnly) && name.readAll() == program + '\n'
            && environment.open(QFile::ReadOnly) && environment.readAll().contains(here);
    });
}

} // namespace plum
