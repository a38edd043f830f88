#pragma once

#include "desktop/support/conditions.h"
#include "desktop/support/probe.h"
#include "desktop/support/server_view.h"
#include "support/printers.h"
#include "support/wait_until.h"
#include "support/x_server.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

// Let a failed comparison show the values; they have to be where the types are.
inline void PrintTo(const QPoint &point, std::ostream *out)
{
    *out << point.x() << ',' << point.y();
}
inline void PrintTo(const QRect &rectangle, std::ostream *out)
{
    *out << rectangle.x() << ',' << rectangle.y() << ' ' << rectangle.width() << 'x' << rectangle.height();
}

namespace plum {

// A whole desktop for one test: an X server, a window manager, a session bus and a home folder of its own,
// and one probe window that has the keyboard.
class DesktopTest : public testing::Test
{
protected:
    static constexpr QRect probeArea{200, 150, 500, 300};

    // `layout` is what setxkbmap takes, several layouts separated by commas. "xfwm4" does not composite,
    // "xfwm4_compositing" does.
    void startDesktop(const QString &windowManager, const QString &layout = QStringLiteral("us"),
        QSize screen = {1280, 900});
    void TearDown() override;

    std::unique_ptr<Probe> startProbe(
        const QString &title, const QRect &rectangle, const QString &picture = {});

    // Waits until the window manager has given the window to the user: shown, framed, active.
    bool isReadyForUse(Probe &other);

    // Makes a window the active one, and waits until the keyboard is in it.
    bool bringToFront(xcb_window_t window);

    // What another program finds on the clipboard; empty when there is nothing.
    QByteArray clipboardText();

    // Runs `program` to its end and returns what it wrote.
    QByteArray outputOf(const QString &program, const QStringList &arguments);

    // Ends the X server under everybody's feet.
    void endServer();

    QString folder() const { return m_folder.path(); }
    const XServer &server() const { return *m_server; }

    // Of the probe window.
    QPoint inClient(int x, int y) { return view->clientRectangle(probe->window()).topLeft() + QPoint(x, y); }

    std::optional<ServerView> view;
    std::unique_ptr<Probe> probe;

private:
    bool startBus();

    QTemporaryDir m_folder;
    QProcess m_bus;
    std::unique_ptr<XServer> m_server;
};

// The same under each window manager.
class EveryManagerTest : public DesktopTest, public testing::WithParamInterface<const char *>
{
protected:
    void SetUp() override { startDesktop(QString::fromLatin1(GetParam())); }
};

inline const auto everyManager = testing::Values("openbox", "icewm", "xfwm4");

inline std::string managerName(const testing::TestParamInfo<const char *> &info)
{
    return info.param;
}

} // namespace plum
