#include "desktop/support/launcher_desktop.h"

#include <QDir>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// With an input method every key takes the way through another process before the launcher has it.
class IbusTest : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        server().start(m_daemon, u"ibus-daemon"_s, {u"--xim"_s, u"--panel=disable"_s, u"--config=disable"_s});
        const QDir addresses(folder() + u"/.config/ibus/bus"_s);
        ASSERT_TRUE(eventually([&] { return !addresses.entryList(QDir::Files).isEmpty(); }));
        qputenv("QT_IM_MODULE", "ibus");
    }

    void TearDown() override
    {
        qunsetenv("QT_IM_MODULE");
        m_daemon.terminate();
        m_daemon.waitForFinished();
        LauncherDesktop::TearDown();
    }

private:
    QProcess m_daemon;
};

} // namespace

TEST_F(IbusTest, keysArriveInTheirOrderAndEnterComesLast)
{
    writeApp(u"greet"_s, {u"input.enter \"who\""_s, resultLine(u"\"who\""_s)});
    startLauncher();
    hands->type(u"greet Ann"_s);
    hands->key(u"Return"_s);
    EXPECT_TRUE(eventually([&] { return results() == "Ann\r\n"; }));
    EXPECT_TRUE(shows(u"frmSet/Text8"_s, u"greet Ann"_s));
    hands->key(u"Escape"_s);
    EXPECT_TRUE(shows(u"frmSet/Text8"_s, {}));
}

} // namespace plum
