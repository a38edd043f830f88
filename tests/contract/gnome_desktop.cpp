#include "contract/real_desktop.h"

#include "platform/keyboard.h"
#include "platform/pointer.h"
#include "support/gnome_session.h"

#include <QDir>
#include <QTemporaryDir>

#include <array>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

constexpr const char *untold = "Wayland tells no program that its window was minimised.";

constexpr const char *formerSize
    = "A maximised window that is moved may come back in the size that it had before.";

constexpr const char *handedOut = "The compositor hands the clipboard's text out and tells nobody.";

constexpr std::array table{
    Exception{"ClipboardOfAll.tellsThatOthersHaveTakenItsText", handedOut},
    Exception{"WindowsOnScreen.maximisedIsMovedWithItsSize", formerSize},
    Exception{"WindowsOnScreen.minimisedIsRestoredByActivating", untold},
    Exception{"WindowsOnScreen.maximisesWhatWasMinimised", untold},
};

// A GNOME Shell and a home with a desktop folder of its own for each process of tests.
class GnomeDesktop final : public RealDesktop
{
public:
    const char *name() const override { return "GNOME"; }

    bool prepare() override
    {
        qputenv("LC_ALL", "C.UTF-8");
        QDir(m_home.path()).mkdir(u"Desktop"_s);
        qputenv("HOME", QFile::encodeName(m_home.path()));
        qunsetenv("XDG_CONFIG_HOME");
        // No service of the machine's own is reached from here.
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        m_session = std::make_unique<GnomeSession>();
        if (m_session->isReady())
            m_session->useAsDesktop();
        return m_session->isReady();
    }

    std::unique_ptr<Platform> createPlatform() override
    {
        // A session without a screen has no keyboard and no mouse; programs that come up before there are
        // some do not listen to them at once.
        if (!m_devices) {
            constexpr quint8 shift = 16;
            m_devices = RealDesktop::createPlatform();
            m_devices->keyboard().keyEvent(shift, 0);
            m_devices->keyboard().keyEvent(shift, Keyboard::KeyUp);
            m_devices->pointer().moveTo({});
        }
        return RealDesktop::createPlatform();
    }

    std::span<const Exception> exceptions() const override { return table; }

private:
    QTemporaryDir m_home;
    std::unique_ptr<GnomeSession> m_session;
    std::unique_ptr<Platform> m_devices;
};

} // namespace

std::unique_ptr<Desktop> Desktop::create()
{
    return std::make_unique<GnomeDesktop>();
}

} // namespace plum::contract
