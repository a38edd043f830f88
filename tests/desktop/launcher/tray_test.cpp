#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The tray icon in a real tray.
class TrayTest : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        startTray();
    }

    void startTray()
    {
        server().start(m_tray, u"trayer"_s,
            {u"--edge"_s, u"bottom"_s, u"--align"_s, u"right"_s, u"--widthtype"_s, u"request"_s,
                u"--height"_s, u"32"_s, u"--SetDockType"_s, u"true"_s});
        ASSERT_TRUE(m_tray.waitForStarted(test::patience));
    }

    void TearDown() override
    {
        LauncherDesktop::TearDown();
        endTray();
    }

    void endTray()
    {
        m_tray.kill();
        m_tray.waitForFinished();
    }

    // Where the tray has put the icon.
    QPoint icon()
    {
        constexpr int enough = 20; // looks that a tray that is coming up does not hold still for
        QRect place;
        int looks = 0;
        EXPECT_TRUE(eventually([&] {
            const Control found = see(u"tray icon/tray icon"_s);
            const QRect before = place;
            place = view->clientRectangle(found.id);
            const bool isStill = found.id != 0 && view->isViewable(found.id) && place.width() > 8
                && place.y() > 800 && place == before;
            looks = isStill ? looks + 1 : 0;
            return looks > enough;
        }));
        return place.center();
    }

    void choose(const QString &item, Hands::Button button = Hands::Left)
    {
        hands->click(icon(), button);
        click(u"cd/"_s + item);
        ASSERT_TRUE(!isRunning() || disappears(u"cd/cd"_s));
    }

private:
    QProcess m_tray;
};

} // namespace

TEST_F(TrayTest, bothButtonsOpenTheMenuAndEveryItemWorks)
{
    startLauncher();
    for (const Hands::Button button : {Hands::Left, Hands::Right}) {
        hands->click(icon(), button);
        ASSERT_TRUE(appears(u"cd/cd"_s)) << button;
        for (const QString &item : {u"xianshi"_s, u"yctp"_s, u"rjsz"_s, u"offs"_s, u"guanbi"_s})
            EXPECT_TRUE(isShown(u"cd/"_s + item)) << item.toStdString();
        hands->key(u"Escape"_s);
        ASSERT_TRUE(disappears(u"cd/cd"_s));
    }
    choose(u"yctp"_s);
    EXPECT_TRUE(disappears(u"frmSet/frmSet"_s));
    choose(u"xianshi"_s, Hands::Right);
    EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
    choose(u"rjsz"_s);
    EXPECT_TRUE(appears(u"hotkey/hotkey"_s));
    click(u"hotkey/Image1"_s);
    choose(u"offs"_s, Hands::Right);
    EXPECT_TRUE(eventually([&] {
        return opened() == QStringList{u"http://127.0.0.1:8642/products/tarnwick_plum/index.html?v=0.01"_s};
    }));
    choose(u"guanbi"_s);
    expectGoodEnd();
    EXPECT_TRUE(eventually([&] { return !view->isKeyTaken('z', XCB_MOD_MASK_1); }));
}

TEST_F(TrayTest, theIconComesBackWithTheTray)
{
    startLauncher();
    icon();
    endTray();
    startTray();
    hands->click(icon());
    EXPECT_TRUE(appears(u"cd/cd"_s));
}

} // namespace plum
