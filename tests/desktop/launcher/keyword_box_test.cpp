#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What a person types and presses in the launcher's main panel. Each app writes its own name and what was
// typed after it.
class KeywordBoxTest : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        for (const QString &keyword : {u"notes"_s, u"piano"_s, u"NOTE"_s, u"mail"_s}) {
            writeApp(keyword,
                {u"me.enter \"typed\""_s, u"set.app \"%1\""_s.arg(keyword), resultLine(u"\"app\""_s),
                    resultLine(u"\"typed\""_s)});
        }
        write(u"config/load/config.txt"_s, "notes\r\npiano\r\nNOTE\r\nmail\r\n");
    }

    // Waits until the results are these, and forgets them.
    void expectResults(const QByteArray &expected)
    {
        EXPECT_TRUE(eventually([&] { return results() == expected; })) << results().toStdString();
        QFile::remove(programFolder() + u"/result.txt"_s);
    }
};

} // namespace

TEST_F(KeywordBoxTest, typingFiltersAndKeysLeadThroughTheLists)
{
    startLauncher();
    EXPECT_TRUE(isShown(u"frmSet/List"_s));
    EXPECT_EQ(see(u"frmSet/List"_s).items, (QStringList{u"notes"_s, u"piano"_s, u"NOTE"_s, u"mail"_s}));

    struct Row
    {
        QString typed;
        QStringList results;
    };
    const std::array rows{Row{u"no"_s, {u"notes"_s, u"piano"_s}}, Row{u"NO"_s, {u"NOTE"_s}},
        Row{u"a"_s, {u"piano"_s, u"mail"_s}}, Row{u"x"_s, {}}};
    for (const Row &row : rows) {
        clearEntry();
        hands->type(row.typed);
        EXPECT_TRUE(lists(u"frmSet/List2"_s, row.results)) << row.typed.toStdString();
        EXPECT_TRUE(appears(u"frmSet/List2"_s));
        EXPECT_FALSE(isShown(u"frmSet/List"_s));
        EXPECT_TRUE(hasFocus(u"frmSet/Text8"_s));
    }

    // What follows a blank is for the script.
    clearEntry();
    hands->type(u"pi ano"_s);
    EXPECT_TRUE(shows(u"frmSet/Text8"_s, u"pi ano"_s));
    EXPECT_EQ(see(u"frmSet/List2"_s).items, QStringList{u"piano"_s});

    hands->key(u"Down"_s);
    EXPECT_TRUE(getsFocus(u"frmSet/List2"_s));
    EXPECT_EQ(textOf(u"frmSet/List2"_s), u"piano"_s);
    hands->key(u"Left"_s);
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
    EXPECT_EQ(see(u"frmSet/Text8"_s).caret, 6);
    EXPECT_TRUE(isShown(u"frmSet/List"_s));

    clearEntry();
    hands->key(u"Down"_s);
    EXPECT_TRUE(getsFocus(u"frmSet/List"_s));
    EXPECT_EQ(textOf(u"frmSet/List"_s), u"notes"_s);
    hands->key(u"Down"_s);
    EXPECT_TRUE(shows(u"frmSet/List"_s, u"piano"_s));
    hands->key(u"Left"_s);
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
    EXPECT_TRUE(isShown(u"frmSet/List"_s));
}

TEST_F(KeywordBoxTest, enterRunsTheAppThatIsMeant)
{
    startLauncher();
    hands->type(u"no of pages"_s);
    hands->key(u"Return"_s);
    expectResults("notes\r\nof pages\r\n");

    clearEntry();
    hands->type(u"mail"_s);
    hands->key(u"Return"_s);
    expectResults("mail\r\n\r\n");

    // In the results: the selected one.
    clearEntry();
    hands->type(u"a"_s);
    hands->key(u"Down"_s);
    hands->key(u"Down"_s);
    EXPECT_TRUE(shows(u"frmSet/List2"_s, u"mail"_s));
    hands->key(u"Return"_s);
    expectResults("mail\r\n\r\n");

    // In the keyword box nothing runs while a result is selected.
    hands->key(u"Left"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Return"_s);

    // In the whole list: the selected one.
    clearEntry();
    ASSERT_TRUE(shows(u"frmSet/Text8"_s, {}));
    hands->key(u"Down"_s);
    hands->key(u"Down"_s);
    hands->key(u"Down"_s);
    EXPECT_TRUE(shows(u"frmSet/List"_s, u"NOTE"_s));
    hands->key(u"Return"_s);
    expectResults("NOTE\r\n\r\n");

    // No result, no run: what comes after it is the only result.
    hands->key(u"Left"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->type(u"zzz"_s);
    hands->key(u"Return"_s);
    clearEntry();
    hands->type(u"piano"_s);
    hands->key(u"Return"_s);
    expectResults("piano\r\n\r\n");
}

TEST_F(KeywordBoxTest, aPressOnThePanelLeadsBackToTheKeywordBox)
{
    startLauncher();
    hands->key(u"Down"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/List"_s));
    hands->click(see(u"frmSet/okbox"_s).place.topLeft() + QPoint(4, 300));
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
}

TEST_F(KeywordBoxTest, activatingTheLauncherFocusesTheKeywordBox)
{
    startLauncher();
    hands->key(u"Down"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/List"_s));
    view->activate(probe->window());
    ASSERT_TRUE(eventually([&] { return view->isActive(probe->window()); }));
    ASSERT_TRUE(eventually([&] { return !see(u"frmSet/List"_s).focus; }));
    view->activate(see(u"frmSet/frmSet"_s).id);
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
}

TEST_F(KeywordBoxTest, theTitleAndThePanelsDragTheWindow)
{
    startLauncher();
    dragWindow(u"frmSet"_s, stillControl(u"frmSet/title"_s).middle(), {150, 60});
    dragWindow(u"frmSet"_s, stillControl(u"frmSet/okbox"_s).place.topLeft() + QPoint(5, 200), {-90, 40});

    chooseForApp(u"mail"_s, u"editok"_s);
    dragWindow(u"frmSet"_s, stillControl(u"frmSet/addeditbox"_s).place.topLeft() + QPoint(5, 200), {60, -50});
    click(u"frmSet/Image9"_s);
    chooseForApp(u"mail"_s, u"editname"_s);
    dragWindow(
        u"frmSet"_s, stillControl(u"frmSet/editnamebox"_s).place.bottomLeft() + QPoint(20, -8), {-80, 90});
}

TEST_F(KeywordBoxTest, eachPanelStandsInTheMiddleOfTheScreen)
{
    startLauncher();
    const auto expectCentred = [&](const QString &panel) {
        EXPECT_TRUE(eventually([&] {
            const QRect window = see(u"frmSet/frmSet"_s).place;
            return isShown(panel) && window == see(panel).place && window.x() == (1280 - window.width()) / 2
                && window.y() == (900 - window.height()) / 2;
        })) << panel.toStdString();
    };
    expectCentred(u"frmSet/okbox"_s);
    chooseForApp(u"mail"_s, u"editok"_s);
    expectCentred(u"frmSet/addeditbox"_s);
    EXPECT_FALSE(isShown(u"frmSet/okbox"_s) || isShown(u"frmSet/editnamebox"_s));
    click(u"frmSet/Image9"_s);
    expectCentred(u"frmSet/okbox"_s);
    chooseForApp(u"mail"_s, u"editname"_s);
    expectCentred(u"frmSet/editnamebox"_s);
    EXPECT_FALSE(isShown(u"frmSet/okbox"_s) || isShown(u"frmSet/addeditbox"_s));
    click(u"frmSet/Image11"_s);
    expectCentred(u"frmSet/okbox"_s);
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
}

} // namespace plum
