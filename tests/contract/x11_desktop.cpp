#include "contract/real_desktop.h"

#include "support/x_server.h"

#include <QDir>
#include <QTemporaryDir>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

// An X server, a window manager and a home with a desktop folder of its own for each process of tests.
class X11Desktop final : public RealDesktop
{
public:
    const char *name() const override { return "X11"; }

    bool prepare() override
    {
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("LC_ALL", "C.UTF-8");
        QDir(m_home.path()).mkdir(u"Desktop"_s);
        qputenv("HOME", QFile::encodeName(m_home.path()));
        qunsetenv("XDG_CONFIG_HOME");
        // No service of the machine's own is reached from here.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        m_server = std::make_unique<XServer>(QSize(1280, 800), QStringList{u"openbox"_s});
        if (m_server->isReady())
            m_server->useAsDisplay();
        return m_server->isReady();
    }

    std::span<const Exception> exceptions() const override { return {}; }

private:
    QTemporaryDir m_home;
    std::unique_ptr<XServer> m_server;
};

} // namespace

std::unique_ptr<Desktop> Desktop::create()
{
    return std::make_unique<X11Desktop>();
}

} // namespace plum::contract
