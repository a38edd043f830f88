#include "desktop/support/hotkey_launcher_test.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The real launcher under what an ordinary day does not bring.
class LauncherStrainTest : public HotkeyLauncherTest
{
protected:
    void press(const QString &keys) { outputOf(u"xdotool"_s, {u"key"_s, keys}); }

    bool isShown() override { return window() != XCB_NONE && view->isViewable(window()); }
    bool hasKeyboard() override { return view->isActive(window()); }

    void togglesAndTakesTheKeyboard()
    {
        for (int turn = 0; turn < 2; ++turn) {
            press(u"alt+z"_s);
            ASSERT_TRUE(eventually([&] { return !isShown(); }));
            press(u"alt+z"_s);
            ASSERT_TRUE(eventually([&] { return isShown() && hasKeyboard(); }));
        }
    }
};

// A service that takes every call and never answers.
class HangingService final : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &, const QDBusConnection &) override
    {
        ++calls;
        return true;
    }

    int calls = 0;
};

} // namespace

TEST_F(LauncherStrainTest, hiddenAndShownInOneGoItsKeywordBoxHasTheKeyboard)
{
    startLauncher();
    for (int turn = 0; turn < 5; ++turn) {
        press(u"alt+z"_s);
        ASSERT_TRUE(eventually([&] { return !isShown(); }));
        press(u"alt+z"_s);
        ASSERT_TRUE(eventually([&] { return isShown() && hasKeyboard() && keywordBoxLooksFocused(); }))
            << turn;
    }
}

TEST_F(LauncherStrainTest, aSessionBusThatHangsHoldsNothingUp)
{
    const QByteArray path = (folder() + u"/silent"_s).toLocal8Bit();
    sockaddr_un where{};
    where.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), where.sun_path);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr *>(&where), sizeof where), 0);
    ASSERT_EQ(listen(listener, 10), 0);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);

    startLauncher();
    togglesAndTakesTheKeyboard();
    EXPECT_TRUE(m_launcher.readAllStandardError().startsWith("plum: The session bus does not answer"));
    close(listener);
}

TEST_F(LauncherStrainTest, aTrayThatHangsHoldsNothingUp)
{
    HangingService tray;
    {
        QDBusConnection bus
            = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"tray"_s);
        ASSERT_TRUE(bus.registerVirtualObject(u"/"_s, &tray, QDBusConnection::SubPath));
        ASSERT_TRUE(bus.registerService(u"org.kde.StatusNotifierWatcher"_s));
    }
    startLauncher();
    ASSERT_TRUE(eventually([&] { return tray.calls > 0; }));
    togglesAndTakesTheKeyboard();
    QDBusConnection::disconnectFromBus(u"tray"_s);
}

} // namespace plum
