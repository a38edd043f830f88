#include "desktop/support/launcher_desktop.h"

#include <QFileInfo>

#include <span>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The picture buttons and the menu behind two of them.
class PicturesTest : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        writeApp(u"alpha"_s, {u"me.hide"_s});
    }

    // Opens the menu `mmmm` and, on the way through its sub-menu, chooses an item.
    void chooseFromTools(const QString &item)
    {
        click(u"frmSet/Image6"_s);
        ASSERT_TRUE(appears(u"mmmm/mmmm"_s));
        click(u"mmmm/toolsa"_s);
        click(u"toolsa/"_s + item);
        ASSERT_TRUE(disappears(u"mmmm/mmmm"_s));
    }

    const QString site = u"http://127.0.0.1:8642"_s;
};

} // namespace

TEST_F(PicturesTest, eachPictureSaysWhatItDoes)
{
    startLauncher();
    struct Row
    {
        QString picture;
        QString tip;
    };
    const auto expectTips = [&](std::span<const Row> rows) {
        for (const Row &row : rows) {
            const QPoint place = stillControl(u"frmSet/"_s + row.picture).middle();
            hands->moveTo(place - QPoint(3, 0));
            hands->moveTo(place);
            EXPECT_TRUE(shows(u"qtooltip_label/qtooltip_label"_s, row.tip)) << row.picture.toStdString();
            // A tip that stays would be taken for the next one.
            hands->moveTo({5, 890});
            EXPECT_TRUE(disappears(u"qtooltip_label/qtooltip_label"_s));
        }
    };
    expectTips(std::array{Row{u"store"_s, u"Store"_s}, Row{u"menuimg"_s, u"Hotkey"_s},
        Row{u"Image6"_s, u"Menu"_s}, Row{u"Image7"_s, u"Exit"_s}});
    chooseForApp(u"alpha"_s, u"editok"_s);
    expectTips(std::array{
        Row{u"Image9"_s, u"Back"_s}, Row{u"Image8"_s, u"Menu"_s}, Row{u"Image5"_s, u"Save (Ctrl+S)"_s}});
    click(u"frmSet/Image9"_s);
    chooseForApp(u"alpha"_s, u"editname"_s);
    expectTips(std::array{Row{u"Image11"_s, u"Back"_s}, Row{u"Image10"_s, u"Rename"_s}});
}

TEST_F(PicturesTest, theMenuPicturesOpenTheSettingsMenu)
{
    startLauncher();
    for (const QString &name : {u"addnew"_s, u"rjsz"_s, u"toolsa"_s, u"tuichu"_s, u"fixit"_s}) {
        if (name == "addnew"_L1) {
            click(u"frmSet/Image6"_s);
            ASSERT_TRUE(appears(u"mmmm/mmmm"_s));
        }
        EXPECT_EQ(isShown(u"mmmm/"_s + name), name != "fixit"_L1) << name.toStdString();
    }
    click(u"mmmm/addnew"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text7"_s));
    click(u"frmSet/Image8"_s);
    ASSERT_TRUE(appears(u"mmmm/mmmm"_s));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(disappears(u"mmmm/mmmm"_s));
    click(u"frmSet/Image9"_s);
    ASSERT_TRUE(appears(u"frmSet/okbox"_s));

    click(u"frmSet/Image6"_s);
    click(u"mmmm/rjsz"_s);
    EXPECT_TRUE(appears(u"hotkey/hotkey"_s));
}

TEST_F(PicturesTest, theItemsForTheWebOpenTheirPages)
{
    startLauncher();
    struct Row
    {
        QString item;
        QString page;
    };
    const std::array rows{Row{u"gfwz"_s, u"/products/tarnwick_plum/index.html?v=0.01"_s},
        Row{u"discuss"_s, u"/topic/tarnwick_plum/"_s}, Row{u"funcstore"_s, u"/topic/tarnwick_plum/"_s},
        Row{u"about"_s, u"/plum/index.html?v=0.01"_s}};
    for (qsizetype i = 0; i < std::ssize(rows); ++i) {
        chooseFromTools(rows[static_cast<size_t>(i)].item);
        EXPECT_TRUE(eventually([&] { return opened().size() == i + 1; }));
        EXPECT_EQ(opened().value(i), site + rows[static_cast<size_t>(i)].page);
    }
}

TEST_F(PicturesTest, thePicturesAnswerToKeysToo)
{
    startLauncher();
    hands->key(u"shift+Tab"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Image7"_s));
    hands->key(u"shift+Tab"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Image6"_s));
    hands->key(u"Return"_s);
    ASSERT_TRUE(appears(u"mmmm/mmmm"_s));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(disappears(u"mmmm/mmmm"_s));
    hands->key(u"shift+Tab"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/menuimg"_s));
    hands->key(u"space"_s);
    EXPECT_TRUE(appears(u"hotkey/hotkey"_s));
}

TEST_F(PicturesTest, image7EndsTheProgramAndGivesTheHotkeyBack)
{
    startLauncher();
    EXPECT_TRUE(view->isKeyTaken('z', XCB_MOD_MASK_1));
    click(u"frmSet/Image7"_s);
    expectGoodEnd();
    EXPECT_TRUE(eventually([&] { return !view->isKeyTaken('z', XCB_MOD_MASK_1); }));
}

TEST_F(PicturesTest, tuichuEndsTheProgram)
{
    startLauncher();
    click(u"frmSet/Image6"_s);
    click(u"mmmm/tuichu"_s);
    expectGoodEnd();
}

// The store's window is a program beside the launcher's own; here it is one that writes down its orders.
TEST_F(PicturesTest, theStorePictureShowsTheCatalogue)
{
    const QString copy = programFolder() + u"/plum"_s;
    ASSERT_TRUE(QFile::remove(copy) && QFile::copy(QStringLiteral(PLUM_PROGRAM), copy));
    const QString backend = u"/plum-x11.so"_s;
    ASSERT_TRUE(
        QFile::link(QFileInfo(QStringLiteral(PLUM_PROGRAM)).path() + backend, programFolder() + backend));
    writeProgram(u"plum-store-window"_s,
        "#!/bin/sh\nexec cat > '" + QFile::encodeName(programFolder()) + "/orders.txt'\n");
    startLauncher();
    click(u"frmSet/store"_s);
    const QByteArray page = "\"http://127.0.0.1:8642/plum/workflow_in/index.html?v=0.01\"";
    EXPECT_TRUE(eventually([&] {
        const QByteArray orders = read(u"orders.txt"_s);
        return orders.contains(page) && orders.contains("\"show\"")
            && orders.contains("{\"pixels\":625,\"verb\":\"height\"}");
    })) << read(u"orders.txt"_s).toStdString();
}

TEST_F(PicturesTest, aSecondStartEndsAtOnce)
{
    startLauncher();
    QProcess second;
    server().start(second, programFolder() + u"/plum"_s);
    EXPECT_TRUE(second.waitForFinished(test::patience));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(isRunning());
    EXPECT_TRUE(isShown(u"frmSet/frmSet"_s));
}

} // namespace plum
