#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Somebody who has just begun, and whose hand stays on the keyboard.
class FirstDayTest : public LauncherDesktop
{
protected:
    bool says(const QString &words)
    {
        return eventually([&] { return textOf(u"frmSet/hint"_s).startsWith(words); });
    }

    bool exists(const QString &keyword) const
    {
        return QFileInfo(programFolder() + u"/config/apps/"_s + keyword).isDir();
    }
};

} // namespace

TEST_F(FirstDayTest, anAppIsMadeRunRenamedAndDeletedWithTheKeyboard)
{
    startLauncher();
    hands->type(u"count"_s);
    ASSERT_TRUE(says(u"No app has this keyword."_s));
    hands->key(u"ctrl+n"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    EXPECT_EQ(textOf(u"frmSet/Text7"_s), u"count"_s);
    hands->type(u"set.word \"ran\""_s);
    hands->key(u"Return"_s);
    hands->type(resultLine(u"\"word\""_s));
    hands->key(u"F5"_s);
    answer(u"Successfully"_s);
    EXPECT_TRUE(says(u"count: done"_s));
    EXPECT_EQ(results(), "ran\r\n");

    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Down"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/List2"_s));
    hands->key(u"F2"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text12"_s));
    hands->type(u"tally"_s);
    hands->key(u"Return"_s);
    answer(u"Successfully"_s);
    EXPECT_TRUE(exists(u"tally"_s));
    EXPECT_TRUE(lists(u"frmSet/List2"_s, {}));

    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(shows(u"frmSet/Text8"_s, {}));
    hands->key(u"Down"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/List"_s));
    hands->key(u"Delete"_s);
    answer(u"确定删除?"_s, u"Yes"_s);
    EXPECT_TRUE(eventually([&] { return !exists(u"tally"_s); }));
    EXPECT_TRUE(lists(u"frmSet/List"_s, {}));
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
}

TEST_F(FirstDayTest, aLetterTypedInAListGoesOnInTheKeywordBox)
{
    writeApp(u"alpha"_s);
    writeApp(u"beta"_s);
    startLauncher();
    hands->key(u"Down"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/List"_s));
    hands->type(u"be"_s);
    EXPECT_TRUE(shows(u"frmSet/Text8"_s, u"be"_s));
    EXPECT_TRUE(lists(u"frmSet/List2"_s, {u"beta"_s}));
}

TEST_F(FirstDayTest, aRunThatLastsSaysWhichLineItIsAt)
{
    writeApp(u"slow"_s, {u"//guide:waits"_s, u"time.sleep \"60000\""_s});
    startLauncher();
    hands->type(u"slow"_s);
    hands->key(u"Return"_s);
    EXPECT_TRUE(says(u"slow runs, line 2"_s));
}

} // namespace plum
