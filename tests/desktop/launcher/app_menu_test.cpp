#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The menu of the lists and the panels that it opens.
class AppMenuTest : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        for (const QString &keyword : {u"alpha"_s, u"beta"_s, u"gamma"_s, u"alphabet"_s})
            writeApp(keyword, {u"//"_s + keyword, u"me.hide"_s});
        write(u"config/load/config.txt"_s, "alpha\r\nbeta\r\ngamma\r\nalphabet\r\n");
    }

    bool exists(const QString &keyword) const
    {
        return QFileInfo(programFolder() + u"/config/apps/"_s + keyword).isDir();
    }

    QByteArray script(const QString &keyword, const QString &name = u"main.wf"_s) const
    {
        return read(u"config/apps/%1/%2"_s.arg(keyword, name));
    }

    QByteArray order() const { return read(u"config/load/config.txt"_s); }

    void replaceText(const QString &text)
    {
        hands->key(u"ctrl+a"_s);
        hands->type(text);
    }
};

} // namespace

TEST_F(AppMenuTest, theRightButtonSelectsTheRowAndMarksItsList)
{
    startLauncher();
    hands->click(rowOf(u"frmSet/List"_s, u"gamma"_s), Hands::Right);
    ASSERT_TRUE(appears(u"list2you/list2you"_s));
    EXPECT_EQ(textOf(u"frmSet/List"_s), u"gamma"_s);
    click(u"list2you/editname"_s);
    EXPECT_TRUE(shows(u"frmSet/Text1"_s, u"gamma"_s));
    click(u"frmSet/Image11"_s);

    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->type(u"alpha"_s);
    ASSERT_TRUE(lists(u"frmSet/List2"_s, {u"alpha"_s, u"alphabet"_s}));
    hands->click(rowOf(u"frmSet/List2"_s, u"alphabet"_s), Hands::Right);
    EXPECT_TRUE(shows(u"frmSet/List2"_s, u"alphabet"_s));
    click(u"list2you/editname"_s);
    EXPECT_TRUE(shows(u"frmSet/Text1"_s, u"alphabet"_s));
}

TEST_F(AppMenuTest, editokEditsAndSavesWithImage5)
{
    startLauncher();
    chooseForApp(u"beta"_s, u"editok"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    EXPECT_EQ(textOf(u"frmSet/Text4"_s), u"//beta\nme.hide"_s);
    EXPECT_EQ(textOf(u"frmSet/Text7"_s), u"beta"_s);
    EXPECT_FALSE(see(u"frmSet/Text7"_s).enabled);
    hands->key(u"ctrl+End"_s);
    hands->key(u"Return"_s);
    hands->type(u"time.sleep \"5\""_s);
    click(u"frmSet/Image5"_s);
    answer(u"Successfully"_s);
    EXPECT_EQ(script(u"beta"_s), "//beta\r\nme.hide\r\ntime.sleep \"5\"\r\n");
    EXPECT_TRUE(appears(u"frmSet/okbox"_s));
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
    EXPECT_EQ(order(), "alpha\r\nbeta\r\ngamma\r\nalphabet\r\n");

    // Back asks, and keeps the file.
    chooseForApp(u"beta"_s, u"editok"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    replaceText(u"gone"_s);
    click(u"frmSet/Image9"_s);
    answer(u"\"beta\" is not saved."_s, u"Discard"_s);
    ASSERT_TRUE(appears(u"frmSet/okbox"_s));
    EXPECT_EQ(script(u"beta"_s), "//beta\r\nme.hide\r\ntime.sleep \"5\"\r\n");

    // An app whose folder has gone cannot be saved, and nothing typed is lost.
    chooseForApp(u"gamma"_s, u"editok"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    QDir(programFolder() + u"/config/apps/gamma"_s).removeRecursively();
    hands->key(u"ctrl+s"_s);
    answer(u"Error"_s);
    EXPECT_TRUE(isShown(u"frmSet/Text4"_s));
    EXPECT_FALSE(exists(u"gamma"_s));
}

TEST_F(AppMenuTest, addnewMakesAnApp)
{
    startLauncher();
    chooseForApp(u"alpha"_s, u"editok"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    click(u"frmSet/Image9"_s);
    chooseForApp(u"alpha"_s, u"addnew"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text7"_s));
    EXPECT_TRUE(see(u"frmSet/Text7"_s).enabled);
    EXPECT_EQ(textOf(u"frmSet/Text7"_s), QString());
    EXPECT_EQ(textOf(u"frmSet/Text4"_s), QString());

    struct Refusal
    {
        QString keyword;
        QString message;
    };
    const std::array refusals{Refusal{{}, u"Keyword is required"_s},
        Refusal{u"beta"_s, u"The Keyword already exists, whether it is renamed ?"_s},
        Refusal{u"BETA"_s, u"The Keyword already exists, whether it is renamed ?"_s},
        Refusal{u"a:b"_s, u"Can not exist *[\\/:*?\"<|>]*"_s},
        Refusal{u"../out"_s, u"Can not exist *[\\/:*?\"<|>]*"_s}};
    for (const Refusal &refusal : refusals) {
        clickInto(u"frmSet/Text7"_s);
        hands->key(u"ctrl+a"_s);
        hands->key(u"Delete"_s);
        hands->type(refusal.keyword);
        ASSERT_TRUE(shows(u"frmSet/Text7"_s, refusal.keyword));
        click(u"frmSet/Image5"_s);
        answer(refusal.message);
        EXPECT_TRUE(isShown(u"frmSet/addeditbox"_s));
    }
    EXPECT_FALSE(QFileInfo::exists(programFolder() + u"/config/out"_s));

    clickInto(u"frmSet/Text7"_s);
    replaceText(u"fresh"_s);
    hands->key(u"Tab"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    hands->type(u"me.hide"_s);
    hands->key(u"Return"_s);
    click(u"frmSet/Image5"_s);
    answer(u"Successfully"_s);
    EXPECT_EQ(script(u"fresh"_s), "me.hide\r\n");
    EXPECT_EQ(order(), "alpha\r\nbeta\r\ngamma\r\nalphabet\r\nfresh\r\n");
    EXPECT_TRUE(lists(u"frmSet/List"_s, {u"alpha"_s, u"beta"_s, u"gamma"_s, u"alphabet"_s, u"fresh"_s}));
}

TEST_F(AppMenuTest, editnameRenamesWithImage10)
{
    startLauncher();
    chooseForApp(u"beta"_s, u"editname"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text12"_s));
    EXPECT_EQ(textOf(u"frmSet/Text1"_s), u"beta"_s);
    EXPECT_EQ(textOf(u"frmSet/Text12"_s), QString());

    // An empty keyword is ignored without a word, a taken one is said.
    click(u"frmSet/Image10"_s);
    hands->type(u"gamma"_s);
    click(u"frmSet/Image10"_s);
    answer(u"Keyword already exists"_s);
    EXPECT_TRUE(isShown(u"frmSet/editnamebox"_s));
    EXPECT_EQ(order(), "alpha\r\nbeta\r\ngamma\r\nalphabet\r\n");

    clickInto(u"frmSet/Text12"_s);
    replaceText(u"delta"_s);
    click(u"frmSet/Image10"_s);
    answer(u"Successfully"_s);
    EXPECT_TRUE(appears(u"frmSet/okbox"_s));
    EXPECT_TRUE(exists(u"delta"_s) && !exists(u"beta"_s));
    EXPECT_EQ(script(u"delta"_s), "//beta\r\nme.hide\r\n");
    EXPECT_EQ(order(), "alpha\r\ndelta\r\ngamma\r\nalphabet\r\n");

    // Enter confirms too; the panel forgets what was typed before.
    chooseForApp(u"delta"_s, u"editname"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text12"_s));
    EXPECT_EQ(textOf(u"frmSet/Text12"_s), QString());
    hands->type(u"epsilon"_s);
    hands->key(u"Return"_s);
    answer(u"Successfully"_s);
    EXPECT_TRUE(exists(u"epsilon"_s));
}

TEST_F(AppMenuTest, delthisAsksAndDeletes)
{
    startLauncher();
    chooseForApp(u"beta"_s, u"delthis"_s);
    ASSERT_TRUE(appears(u"message/message"_s));
    const Control question = see(u"message/message"_s);
    EXPECT_EQ(question.text, u"确定删除?"_s);
    EXPECT_EQ(question.title, u"提示"_s);
    EXPECT_EQ(question.icon, 4); // the question mark
    EXPECT_TRUE(question.topmost);
    EXPECT_TRUE(isShown(u"message/Yes"_s) && isShown(u"message/No"_s));
    answer(u"确定删除?"_s, u"No"_s);
    EXPECT_TRUE(exists(u"beta"_s));
    EXPECT_TRUE(see(u"frmSet/List"_s).items.contains(u"beta"_s));

    // Enter on the question loses nothing.
    chooseForApp(u"beta"_s, u"delthis"_s);
    ASSERT_TRUE(getsFocus(u"message/No"_s));
    hands->key(u"Return"_s);
    ASSERT_TRUE(disappears(u"message/message"_s));
    EXPECT_TRUE(exists(u"beta"_s));

    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->type(u"beta"_s);
    ASSERT_TRUE(lists(u"frmSet/List2"_s, {u"beta"_s}));
    hands->click(rowOf(u"frmSet/List2"_s, u"beta"_s), Hands::Right);
    click(u"list2you/delthis"_s);
    answer(u"确定删除?"_s, u"Yes"_s);
    EXPECT_TRUE(eventually([&] { return !exists(u"beta"_s); }));
    EXPECT_TRUE(lists(u"frmSet/List"_s, {u"alpha"_s, u"gamma"_s, u"alphabet"_s}));
    EXPECT_TRUE(appears(u"frmSet/List"_s));
    EXPECT_EQ(order(), "alpha\r\ngamma\r\nalphabet\r\n");
}

TEST_F(AppMenuTest, openthisfoldAndShuomingTellAboutTheApp)
{
    writeApp(u"texted"_s, {u"//guide:type a name"_s});
    writeApp(u"paged"_s, {u"//guide:http://127.0.0.1/guide"_s});
    writeApp(u"blanked"_s, {u"// guide:nothing"_s});
    write(u"config/load/config.txt"_s, "alpha\r\ntexted\r\npaged\r\nblanked\r\n");
    startLauncher();
    chooseForApp(u"alpha"_s, u"openthisfold"_s);
    EXPECT_TRUE(eventually([&] { return opened().size() == 1; }));
    EXPECT_EQ(QDir(opened().value(0)), QDir(programFolder() + u"/config/apps/alpha"_s));

    chooseForApp(u"texted"_s, u"shuoming"_s);
    answer(u"type a name"_s);
    chooseForApp(u"paged"_s, u"shuoming"_s);
    EXPECT_TRUE(eventually([&] { return opened().size() == 2; }));
    EXPECT_EQ(opened().value(1), u"http://127.0.0.1/guide"_s);
    for (const QString &keyword : {u"blanked"_s, u"alpha"_s}) {
        chooseForApp(keyword, u"shuoming"_s);
        answer(u"Guide does not exist"_s);
    }
}

TEST_F(AppMenuTest, withoutASelectedAppNothingIsLost)
{
    write(u"config/load/config.txt"_s, "alpha\r\n");
    startLauncher();
    // Under the last row no app is.
    const auto choose = [&](const QString &item) {
        hands->click(stillControl(u"frmSet/List"_s).place.bottomLeft() + QPoint(60, -20), Hands::Right);
        click(u"list2you/"_s + item);
        EXPECT_TRUE(disappears(u"list2you/"_s + item)); // while it is there it takes the next click
    };
    choose(u"openthisfold"_s);
    EXPECT_TRUE(eventually([&] { return opened().size() == 1; }));
    EXPECT_EQ(QDir(opened().value(0)), QDir(programFolder() + u"/config/apps"_s));
    choose(u"shuoming"_s);
    answer(u"Guide does not exist"_s);
    choose(u"delthis"_s);
    choose(u"editname"_s);
    EXPECT_TRUE(getsFocus(u"frmSet/Text12"_s));
    EXPECT_FALSE(isShown(u"message/message"_s));
    EXPECT_TRUE(exists(u"alpha"_s));
}

TEST_F(AppMenuTest, aDoubleClickOnAResultOpensItsSecondScript)
{
    write(u"config/apps/beta/.main.wf"_s, "//second\r\nme.hide");
    startLauncher();
    hands->type(u"et"_s);
    hands->doubleClick(rowOf(u"frmSet/List2"_s, u"beta"_s));
    ASSERT_TRUE(appears(u"frmSet/addeditbox"_s));
    EXPECT_TRUE(shows(u"frmSet/Label5"_s, u"\"beta\"  is editting"_s));
    EXPECT_EQ(textOf(u"frmSet/Text7"_s), u"beta"_s);
    EXPECT_EQ(textOf(u"frmSet/Text4"_s), u"//second\nme.hide"_s);
    EXPECT_EQ(see(u"frmSet/Image9"_s).toolTip, u"Hide"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    replaceText(u"//changed"_s);
    click(u"frmSet/Image5"_s);
    answer(u"Successfully"_s);
    EXPECT_EQ(script(u"beta"_s, u".main.wf"_s), "//changed");
    EXPECT_EQ(script(u"beta"_s), "//beta\r\nme.hide\r\n");

    // A double click on the whole list opens nothing.
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    clearEntry();
    hands->key(u"Down"_s);
    hands->doubleClick(rowOf(u"frmSet/List"_s, u"gamma"_s));
    EXPECT_TRUE(shows(u"frmSet/List"_s, u"gamma"_s));
    EXPECT_TRUE(isShown(u"frmSet/okbox"_s));
}

} // namespace plum
