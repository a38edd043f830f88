#include "desktop/support/launcher_desktop.h"

#include <QDir>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// An app comes as a package, says what it may do, runs under that, and is asked about when it changes.
class GrantingTest : public LauncherDesktop
{
protected:
    // A package that the launcher asks about when it starts.
    void requestInstall(const QString &name, const QByteArray &script)
    {
        write(u"content/main.wf"_s, script);
        outputOf(u"zip"_s,
            {u"-q"_s, u"-j"_s, folder() + u"/package.zip"_s, programFolder() + u"/content/main.wf"_s});
        const QString package = folder() + u'/' + name + u".wfp"_s;
        ASSERT_TRUE(QFile::rename(folder() + u"/package.zip"_s, package));
        write(u"config/load/requests/1.request"_s, package.toUtf8());
    }

    void install(const QString &name, const QByteArray &script)
    {
        requestInstall(name, script);
        startProgram(); // the question has the keyboard
        agreeToInstall(name);
        answer(u"Successfully"_s);
    }

    void run(const QString &keyword, const QString &behind = {})
    {
        clickInto(u"frmSet/Text8"_s);
        hands->key(u"ctrl+a"_s);
        hands->type(keyword);
        ASSERT_TRUE(lists(u"frmSet/List2"_s, {keyword}));
        hands->type(behind);
        hands->key(u"Return"_s);
    }
};

} // namespace

TEST_F(GrantingTest, anAppRunsUnderWhatWasAgreedToAndAsksWhenItChanges)
{
    const QByteArray script = "file.read +?+/config/load/config.txt+(me.enter_input),\"\",\"t\"\r\n"
                              "os.tips here is +?++(set.t)\r\n";
    requestInstall(u"shy"_s, script);
    startProgram(); // the question has the keyboard
    ASSERT_TRUE(appears(u"asks/sheet"_s));
    EXPECT_EQ(textOf(u"asks/sheet"_s), u"Reads any file that you can read.\nContacts nobody."_s);
    agreeToInstall(u"shy"_s);
    answer(u"Successfully"_s);

    // "Any file" is not Plum's own.
    run(u"shy"_s, u' ' + programFolder());
    ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
    EXPECT_EQ(textOf(u"shurubox/tipsbox"_s), u"here is "_s);
    EXPECT_TRUE(eventually([&] {
        return textOf(u"frmSet/hint"_s).contains(u"not allowed for shy: reading"_s);
    })) << textOf(u"frmSet/hint"_s).toStdString();
    hands->key(u"Escape"_s);
    ASSERT_TRUE(disappears(u"shurubox/shurubox"_s));

    write(u"config/apps/shy/main.wf"_s, "os.tips \"new\"\r\nos.lock_screen\r\n");
    run(u"shy"_s);
    ASSERT_TRUE(appears(u"asks/asks"_s));
    EXPECT_EQ(textOf(u"asks/sheet"_s), u"It could not do this before:\nLocks the screen."_s);
    EXPECT_FALSE(isShown(u"shurubox/shurubox"_s));
    agreeToInstall(u"shy"_s);
    ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
    EXPECT_EQ(textOf(u"shurubox/tipsbox"_s), u"new"_s);
}

TEST_F(GrantingTest, theMenuTellsWhatAnAppMayDoAndTakesItBack)
{
    install(u"shy"_s, "os.tips \"hello\"\r\n");
    chooseForApp(u"shy"_s, u"maydo"_s);
    answer(u"shy may do this and nothing else."_s, u"takeBack"_s);
    run(u"shy"_s);
    ASSERT_TRUE(appears(u"asks/asks"_s));
    EXPECT_EQ(textOf(u"asks/question"_s), u"You have taken back what this app may do. May it run again?"_s);
    click(u"asks/cancel"_s);
    ASSERT_TRUE(disappears(u"asks/asks"_s));
    EXPECT_FALSE(isShown(u"shurubox/shurubox"_s));
    EXPECT_TRUE(eventually([&] { return read(u"config/load/grants.json"_s).contains("taken back"); }));
}

TEST_F(GrantingTest, anAppThatTheUserEditsIsTheUsersOwn)
{
    install(u"shy"_s, "os.tips \"hello\"\r\n");
    EXPECT_TRUE(read(u"config/load/grants.json"_s).contains("shy"));
    chooseForApp(u"shy"_s, u"editok"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    hands->key(u"ctrl+End"_s);
    hands->key(u"Return"_s);
    hands->type(u"x"_s);
    click(u"frmSet/Image5"_s);
    answer(u"Successfully"_s);
    EXPECT_FALSE(read(u"config/load/grants.json"_s).contains("shy"));
}

} // namespace plum
