#include "desktop/support/hotkey_launcher_test.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The launcher as other programs see it.
class LauncherTest : public HotkeyLauncherTest
{
protected:
    void press(const QStringList &keys) { outputOf(u"xdotool"_s, QStringList{u"key"_s} + keys); }
    void type(const QString &text) { outputOf(u"xdotool"_s, {u"type"_s, text}); }

    // What another program is told of the launcher's windows on the screen.
    bool isShown() override
    {
        return answerOf({u"search"_s, u"--onlyvisible"_s, u"--pid"_s, pid()}).size() > 0;
    }
    bool hasKeyboard() override
    {
        return answerOf({u"getactivewindow"_s, u"getwindowpid"_s}) == pid().toLatin1();
    }

private:
    QString pid() const { return QString::number(m_launcher.processId()); }

    QByteArray answerOf(const QStringList &question)
    {
        QProcess xdotool;
        server().start(xdotool, u"xdotool"_s, question);
        xdotool.waitForFinished();
        return xdotool.readAllStandardOutput().trimmed();
    }
};

} // namespace

TEST_F(LauncherTest, comesAndGoesWithTheHotkeyWhateverHasTheKeyboard)
{
    startLauncher();
    for (int turn = 0; turn < 5; ++turn) {
        press({u"alt+z"_s});
        ASSERT_TRUE(eventually([&] { return !isShown(); }));
        press({u"alt+z"_s});
        ASSERT_TRUE(eventually([&] { return isShown() && hasKeyboard(); }));
    }
}

TEST_F(LauncherTest, runsTheAppWhoseKeywordIsTyped)
{
    const QString result = folder() + u"/result.txt"_s;
    write(u"config/apps/greet/main.wf"_s,
        u"me.enter \"who\"\r\nfile.save \"%1\",\"who\",\"append\"\r\n"_s.arg(result).toUtf8());
    startLauncher();
    type(u"greet Ann"_s);
    press({u"Return"_s});
    EXPECT_TRUE(eventually([&] {
        QFile file(result);
        return file.open(QIODevice::ReadOnly) && file.readAll() == "Ann\r\n";
    }));
}

TEST_F(LauncherTest, aSecondStartFetchesTheHiddenFirstOneAndEndsSilently)
{
    startLauncher();
    press({u"alt+z"_s});
    ASSERT_TRUE(eventually([&] { return !isShown(); }));
    QProcess second;
    server().start(second, program());
    ASSERT_TRUE(second.waitForFinished(test::patience));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(second.readAllStandardError().toStdString(), "");
    EXPECT_TRUE(eventually([&] { return isShown() && hasKeyboard(); }));
}

TEST_F(LauncherTest, answersTheHotkeyWhileAScriptWaitsForAServer)
{
    QTcpServer slow;
    ASSERT_TRUE(slow.listen(QHostAddress::LocalHost));
    const QString result = folder() + u"/result.txt"_s;
    write(u"config/apps/fetch/main.wf"_s,
        u"net.get \"http://127.0.0.1:%1/\",\"page\"\r\nfile.save \"%2\",\"page\",\"append\"\r\n"_s
            .arg(slow.serverPort())
            .arg(result)
            .toUtf8());
    startLauncher();
    type(u"fetch"_s);
    press({u"Return"_s});
    ASSERT_TRUE(eventually([&] { return slow.hasPendingConnections(); }));

    press({u"alt+z"_s});
    EXPECT_TRUE(eventually([&] { return !isShown(); }));
    press({u"alt+z"_s});
    EXPECT_TRUE(eventually([&] { return isShown(); }));
    EXPECT_FALSE(QFile::exists(result));

    QTcpSocket *socket = slow.nextPendingConnection();
    socket->write("HTTP/1.1 200 OK\r\nContent-Length: 4\r\nConnection: close\r\n\r\nslow");
    EXPECT_TRUE(eventually([&] {
        QFile file(result);
        return file.open(QIODevice::ReadOnly) && file.readAll() == "slow\r\n";
    }));
}

} // namespace plum
