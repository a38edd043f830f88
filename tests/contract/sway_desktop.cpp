#include "contract/real_desktop.h"

#include "platform/keyboard.h"
#include "platform/pointer.h"
#include "support/sway_session.h"

#include <QDir>
#include <QTemporaryDir>

#include <array>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

constexpr const char *untold = "Wayland tells no program that its window was minimised.";

constexpr std::array table{
    Exception{"WindowsOnScreen.minimisedIsRestoredByActivating", untold},
    Exception{"WindowsOnScreen.maximisesWhatWasMinimised", untold},
    Exception{"WindowsOnScreen.topmostStaysAboveTheOneInFront", "Sway keeps no window above all others."},
};

// A sway and a home with a desktop folder of its own for each process of tests.
class SwayDesktop final : public RealDesktop
{
public:
    const char *name() const override { return "Sway"; }

    bool prepare() override
    {
        qputenv("LC_ALL", "C.UTF-8");
        QDir(m_home.path()).mkdir(u"Desktop"_s);
        qputenv("HOME", QFile::encodeName(m_home.path()));
        qunsetenv("XDG_CONFIG_HOME");
        // No service of the machine's own is reached from here.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        m_session = std::make_unique<SwaySession>(QStringList{u"output HEADLESS-1 resolution 1280x800"_s});
        if (m_session->isReady())
            m_session->useAsDesktop();
        return m_session->isReady();
    }

    std::unique_ptr<Platform> createPlatform() override
    {
        // A session without a screen has no keyboard and no mouse; programs that come up before there are
        // some do not listen to them at once.
        if (!m_devices) {
            m_devices = RealDesktop::createPlatform();
            m_devices->keyboard();
            m_devices->pointer();
        }
        return RealDesktop::createPlatform();
    }

    std::span<const Exception> exceptions() const override { return table; }

private:
    QTemporaryDir m_home;
    std::unique_ptr<SwaySession> m_session;
    std::unique_ptr<Platform> m_devices;
};

} // namespace

std::unique_ptr<Desktop> Desktop::create()
{
    return std::make_unique<SwayDesktop>();
}

} // namespace plum::contract
