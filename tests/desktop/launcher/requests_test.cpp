#include "desktop/support/launcher_desktop.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What the desktop and other programs ask of a launcher: through plumkit, and on the session bus.
class RequestsTest : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        ASSERT_TRUE(QFile::link(QStringLiteral(PLUM_KIT), programFolder() + u"/plumkit"_s));
        writeApp(u"note"_s, {u"set.entry \"ran\""_s, resultLine(u"\"entry\""_s)});
    }
    void TearDown() override
    {
        m_bus.reset();
        QDBusConnection::disconnectFromBus(u"asker"_s);
        LauncherDesktop::TearDown();
    }

    // The program folder is where an installed Plum has its library.
    void makeItTheUsersLibrary()
    {
        const QString data = folder() + u"/.local/share"_s;
        ASSERT_TRUE(QDir().mkpath(data));
        ASSERT_TRUE(QFile::link(programFolder(), data + u"/plum"_s));
    }

    // How plumkit ends.
    int kit(const QStringList &arguments)
    {
        QProcess process;
        server().start(process, programFolder() + u"/plumkit"_s, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        m_said = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QDBusConnection &bus()
    {
        if (!m_bus)
            m_bus
                = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"asker"_s);
        return *m_bus;
    }
    bool hasName() { return bus().interface()->isServiceRegistered(name); }

    // The error's text; empty for none.
    QString ask(const QString &method, const QVariantList &arguments = {})
    {
        QDBusMessage call
            = QDBusMessage::createMethodCall(name, u'/' + QString(name).replace(u'.', u'/'), name, method);
        call.setArguments(arguments);
        const QDBusMessage answer = bus().call(call, QDBus::Block, 60'000);
        return answer.type() == QDBusMessage::ReplyMessage ? QString() : answer.errorMessage();
    }

    bool hasRun(int times)
    {
        return eventually([&] { return results().count("ran") == times; });
    }

    const QString name = QStringLiteral(PLUM_DOMAIN ".Plum");
    QByteArray m_said; // by plumkit

private:
    std::optional<QDBusConnection> m_bus;
};

} // namespace

TEST_F(RequestsTest, theBusReachesTheLauncherOfTheUsersLibrary)
{
    makeItTheUsersLibrary();
    write(u"new.wfp"_s, "no package");
    startLauncher();
    ASSERT_TRUE(eventually([&] { return hasName(); }));
    EXPECT_EQ(ask(u"Run"_s, {u"note"_s}), QString());
    EXPECT_TRUE(hasRun(1));
    EXPECT_EQ(ask(u"Run"_s, {u"nobody"_s}), u"there is no app \"nobody\""_s);
    hands->key(u"alt+z"_s);
    ASSERT_TRUE(disappears(u"frmSet/frmSet"_s));
    EXPECT_EQ(ask(u"Show"_s), QString());
    EXPECT_TRUE(appears(u"frmSet/frmSet"_s));
    EXPECT_EQ(ask(u"Install"_s, {programFolder() + u"/nothing.wfp"_s}),
        u"there is no package %1/nothing.wfp"_s.arg(programFolder()));
    EXPECT_EQ(ask(u"Install"_s, {programFolder() + u"/new.wfp"_s}), QString());
    EXPECT_TRUE(shows(u"asks/keyword"_s, u"new"_s));
}

TEST_F(RequestsTest, theLauncherOfAnyOtherFolderIsNotOnTheBus)
{
    startLauncher();
    hands->key(u"alt+z"_s);
    ASSERT_TRUE(disappears(u"frmSet/frmSet"_s));
    // A second start has it look for its name again before it comes forward for good.
    EXPECT_EQ(kit({u"launcher"_s, u"show"_s}), 0);
    ASSERT_TRUE(appears(u"frmSet/frmSet"_s));
    EXPECT_EQ(kit({u"launcher"_s, u"run"_s, u"note"_s}), 0);
    EXPECT_TRUE(hasRun(1));
    EXPECT_FALSE(hasName());
}

TEST_F(RequestsTest, aWordOfPlumkitReachesTheLauncherThatRuns)
{
    writeApp(u"long"_s, {u"set.entry \"ran\""_s, resultLine(u"\"entry\""_s), u"time.sleep \"600000\""_s});
    startLauncher();
    EXPECT_EQ(kit({u"launcher"_s, u"run"_s, u"long"_s}), 0);
    ASSERT_TRUE(hasRun(1));
    EXPECT_EQ(kit({u"launcher"_s, u"stop"_s}), 0);
    EXPECT_TRUE(eventually([&] { return textOf(u"frmSet/hint"_s).contains(u"long: stopped"_s); }))
        << textOf(u"frmSet/hint"_s).toStdString();
    EXPECT_EQ(kit({u"launcher"_s, u"new"_s}), 0);
    EXPECT_TRUE(getsFocus(u"frmSet/Text7"_s));
    EXPECT_EQ(kit({u"launcher"_s, u"run"_s, u"nobody"_s}), 2);
}

TEST_F(RequestsTest, whereNoneRunsStopStartsNone)
{
    EXPECT_EQ(kit({u"launcher"_s, u"stop"_s}), 1);
    EXPECT_EQ(m_said, "plumkit: no launcher runs\n");
    EXPECT_EQ(QDir(programFolder() + u"/config/load/requests"_s).entryList(QDir::Files), QStringList());
}

TEST_F(RequestsTest, aScriptThatIsOpenedIsAskedAbout)
{
    const QString script = folder() + u"/my script.wf"_s;
    QFile file(script);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write((u"set.entry \"ran\"\r\n"_s + resultLine(u"\"entry\""_s) + u"\r\n"_s).toUtf8());
    file.close();
    startLauncher();
    EXPECT_EQ(kit({u"open"_s, script}), 0);
    answer(u"Run or edit \"my script.wf\"?"_s, u"run"_s);
    EXPECT_TRUE(hasRun(1));
    EXPECT_EQ(kit({u"open"_s, script}), 0);
    answer(u"Run or edit \"my script.wf\"?"_s, u"edit"_s);
    EXPECT_TRUE(shows(u"frmSet/file"_s, script));
    EXPECT_EQ(results().count("ran"), 1);
}

} // namespace plum
