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

    // What is typed from now on is composed.
    void chooseEngine()
    {
        server().start(m_engine, QStringLiteral(PLUM_IBUS_ENGINE), {});
        while (!m_engine.canReadLine() && m_engine.waitForReadyRead(test::patience)) { }
        ASSERT_EQ(m_engine.readLine(), "ready\n") << m_engine.readAllStandardError().toStdString();
    }

    void TearDown() override
    {
        qunsetenv("QT_IM_MODULE");
        m_engine.closeWriteChannel();
        m_engine.waitForFinished();
        m_daemon.terminate();
        m_daemon.waitForFinished();
        LauncherDesktop::TearDown();
    }

private:
    QProcess m_daemon;
    QProcess m_engine;
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

TEST_F(IbusTest, whatIsComposedIsFoundAndRunOnceItIsThere)
{
    writeApp(u"你好"_s, {u"set.which \"composed\""_s, resultLine(u"\"which\""_s)});
    writeApp(u"nihao"_s, {u"set.which \"letters\""_s, resultLine(u"\"which\""_s)});
    chooseEngine();
    startLauncher();
    hands->type(u"nihao"_s);
    hands->key(u"space"_s);
    ASSERT_TRUE(shows(u"frmSet/Text8"_s, u"你好"_s));
    EXPECT_TRUE(lists(u"frmSet/List2"_s, {u"你好"_s}));
    hands->key(u"Return"_s);
    EXPECT_TRUE(eventually([&] { return results() == "composed\r\n"; }));
}

} // namespace plum
