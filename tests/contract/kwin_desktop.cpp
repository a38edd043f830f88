#include "contract/real_desktop.h"

#include "support/headless_kwin.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <array>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

constexpr const char *untold = "Wayland tells no program that its window was minimised.";
constexpr const char *lacking = "KWin takes no keymap of a program's, and types what the user's layout has.";

constexpr std::array table{
    Exception{"KeyboardPort.typesTextsOfAnyCharacters", lacking},
    Exception{"KeyboardPort.typesAThousandDifferentCharactersInTheirOrder", lacking},
    Exception{"KeyboardPort.leavesATextWhereTheCallerLeavesIt", lacking},
    Exception{"WindowsOnScreen.minimisedIsRestoredByActivating", untold},
    Exception{"WindowsOnScreen.maximisesWhatWasMinimised", untold},
};

// A KWin and a home with a desktop folder of its own for each process of tests.
class KWinDesktop final : public RealDesktop
{
public:
    const char *name() const override { return "KWin"; }

    bool prepare() override
    {
        qputenv("LC_ALL", "C.UTF-8");
        QDir(m_home.path()).mkdir(u"Desktop"_s);
        qputenv("HOME", QFile::encodeName(m_home.path()));
        qunsetenv("XDG_CONFIG_HOME");
        // No service of the machine's own is reached from here.
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        const QFileInfo self(u"/proc/self/exe"_s);
        const QDir programs = QFileInfo(self.symLinkTarget()).dir();
        m_session = std::make_unique<HeadlessKWin>(
            QStringList{self.symLinkTarget(), programs.filePath(QStringLiteral(PLUM_CONTRACT_PEER))});
        if (m_session->isReady())
            m_session->useAsDesktop();
        return m_session->isReady();
    }

    std::span<const Exception> exceptions() const override { return table; }

private:
    QTemporaryDir m_home;
    std::unique_ptr<HeadlessKWin> m_session;
};

} // namespace

std::unique_ptr<Desktop> Desktop::create()
{
    return std::make_unique<KWinDesktop>();
}

} // namespace plum::contract
