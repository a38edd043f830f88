#include "desktop/support/desktop_test.h"

#include <QElapsedTimer>

#include <csignal>
#include <sys/prctl.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QStringList managerCommand(const QString &name)
{
    if (name == "xfwm4_compositing"_L1)
        return {u"xfwm4"_s, u"--compositor=on"_s};
    // Shadows and fading would only cost time here.
    return name == "xfwm4"_L1 ? QStringList{name, u"--compositor=off"_s} : QStringList{name};
}

} // namespace

void DesktopTest::startDesktop(const QString &windowManager, const QString &layout, QSize screen)
{
    ASSERT_TRUE(m_folder.isValid());
    // Nobody's own settings decide here, and no program finds its way to the session outside.
    qputenv("HOME", QFile::encodeName(folder()));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder()));
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "SESSION_MANAGER",
             "QT_QPA_PLATFORM", "DISPLAY"})
        qunsetenv(variable);
    qputenv("LC_ALL", "C.UTF-8");
    ASSERT_TRUE(startBus());

    m_server = std::make_unique<XServer>(screen, managerCommand(windowManager));
    ASSERT_TRUE(m_server->isReady());
    m_server->useAsDisplay();
    view.emplace(m_server->display());
    outputOf(u"setxkbmap"_s, {u"-layout"_s, layout});

    probe = startProbe(u"Probe"_s, probeArea);
    ASSERT_TRUE(isReadyForUse(*probe));
}

void DesktopTest::endServer()
{
    view.reset();
    m_server.reset();
}

void DesktopTest::TearDown()
{
    probe.reset();
    endServer();
    m_bus.kill();
    m_bus.waitForFinished();
    // A service of the session writes its last files when it sees the bus gone.
    m_folder.setAutoRemove(false);
    EXPECT_TRUE(eventually([&] { return QDir(folder()).removeRecursively(); }));
}

bool DesktopTest::startBus()
{
    m_bus.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
    QByteArray address;
    while (!address.endsWith('\n') && m_bus.waitForReadyRead(test::patience))
        address += m_bus.readAllStandardOutput();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.trimmed());
    return address.endsWith('\n');
}

std::unique_ptr<Probe> DesktopTest::startProbe(
    const QString &title, const QRect &rectangle, const QString &picture)
{
    return std::make_unique<Probe>(*m_server, folder() + u'/' + title + u".log"_s, title, rectangle, picture);
}

bool DesktopTest::isReadyForUse(Probe &other)
{
    // A window manager that has not come up quite loses a wish now and then, so it is told again.
    QElapsedTimer sinceAsked;
    sinceAsked.start();
    const auto askAgain = [&](void (ServerView::*ask)(xcb_window_t)) {
        constexpr qint64 patience = 1000; // milliseconds
        if (sinceAsked.elapsed() > patience) {
            ((*view).*ask)(other.window());
            sinceAsked.restart();
        }
    };
    const auto isFramed = [&] {
        if (!view->isViewable(other.window()))
            askAgain(&ServerView::map);
        return view->isViewable(other.window()) && view->isListed(other.window())
            && view->frameRectangle(other.window()) != view->clientRectangle(other.window());
    };
    if (!other.hasStarted() || !eventually(isFramed)) {
        ADD_FAILURE() << "started: " << other.hasStarted() << ", shown: " << view->isViewable(other.window())
                      << ", listed: " << view->isListed(other.window());
        return false;
    }
    // A window that was there before the manager had come up quite is not made active by itself.
    if (!view->isActive(other.window()))
        view->activate(other.window());
    return eventually([&] {
        if (!view->isActive(other.window()))
            askAgain(&ServerView::activate);
        return view->isActive(other.window()) && other.seen().contains(u"focus in"_s);
    });
}

bool DesktopTest::bringToFront(xcb_window_t window)
{
    // What another program wished just before may reach the manager later, so it is told again.
    constexpr qint64 askAgain = 1000; // milliseconds
    QElapsedTimer sinceAsked;
    return eventually([&] {
        const bool isInFront = view->isActive(window) && !view->classWithKeyboard().isEmpty();
        if (!isInFront && (!sinceAsked.isValid() || sinceAsked.hasExpired(askAgain))) {
            view->activate(window);
            sinceAsked.start();
        }
        return isInFront;
    });
}

QByteArray DesktopTest::outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    m_server->start(process, program, arguments);
    EXPECT_TRUE(process.waitForFinished(test::patience)) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QByteArray DesktopTest::clipboardText()
{
    QProcess xclip;
    m_server->start(xclip, u"xclip"_s, {u"-o"_s, u"-selection"_s, u"clipboard"_s});
    EXPECT_TRUE(xclip.waitForFinished(test::patience));
    return xclip.readAllStandardOutput();
}

} // namespace plum
