#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct SmallScreen
{
    QSize pixels;
    const char *scale;
};

// A screen that is small for how large things are drawn on it.
class SmallScreenTest : public LauncherDesktop, public testing::WithParamInterface<SmallScreen>
{
protected:
    void SetUp() override
    {
        prepare(u"openbox"_s, GetParam().pixels);
        qputenv("QT_SCALE_FACTOR", GetParam().scale);
    }

    void TearDown() override
    {
        qunsetenv("QT_SCALE_FACTOR");
        LauncherDesktop::TearDown();
    }

    // The window comes up as a whole.
    void expectWhole(const QString &name)
    {
        const QRect screen(QPoint(), GetParam().pixels);
        const QString path = name + u'/' + name;
        QRect place;
        EXPECT_TRUE(eventually([&] {
            if (!isShown(path) || !view->isViewable(see(path).id))
                return false;
            place = view->clientRectangle(see(path).id);
            return screen.contains(place);
        })) << name.toStdString()
            << " at " << place.x() << ',' << place.y() << ' ' << place.width() << 'x' << place.height();
    }

    // The same of another program's window, with what the window manager puts around it.
    void expectWholeWindow(const QByteArray &title, xcb_window_t otherThan = XCB_NONE)
    {
        QRect place;
        EXPECT_TRUE(eventually([&] {
            const xcb_window_t window = view->windowTitled(title, otherThan);
            if (window == XCB_NONE || !view->isViewable(window))
                return false;
            place = view->frameRectangle(window);
            return QRect(QPoint(), GetParam().pixels).contains(place);
        })) << title.toStdString()
            << " at " << place.x() << ',' << place.y() << ' ' << place.width() << 'x' << place.height();
    }

    void expectInside(const QString &path)
    {
        EXPECT_TRUE(eventually([&] {
            const Control control = see(path);
            return control.shown && see(control.window + u'/' + control.window).place.contains(control.place);
        })) << path.toStdString();
    }

    // What opening a package on the desktop does.
    void writeRequest()
    {
        write(u"config/load/requests/1.request"_s, (folder() + u"/chess.wfp"_s).toUtf8());
        QProcess second;
        server().start(second, programFolder() + u"/plum"_s, {});
        ASSERT_TRUE(second.waitForFinished(test::patience));
    }

    // With Esc, to the launcher.
    void leave(const QString &name)
    {
        ASSERT_TRUE(eventually([&] { return view->hasKeyboard(see(name + u'/' + name).id); }))
            << name.toStdString();
        hands->key(u"Escape"_s);
        ASSERT_TRUE(disappears(name + u'/' + name)) << name.toStdString();
        ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s)) << name.toStdString();
    }
};

INSTANTIATE_TEST_SUITE_P(Screens, SmallScreenTest,
    testing::Values(SmallScreen{{800, 600}, "2"}, SmallScreen{{1366, 768}, "1.5"}),
    [](const auto &each) { return each.index == 0 ? "800x600x2" : "1366x768x150"; });

// Two monitors beside each other.
class MonitorsTest : public LauncherDesktop
{
protected:
    const QRect left{0, 0, 640, 900};
    const QRect right{640, 0, 640, 900};

    void SetUp() override
    {
        LauncherDesktop::SetUp();
        outputOf(u"xrandr"_s, {u"--setmonitor"_s, u"left"_s, u"640/170x900/240+0+0"_s, u"screen"_s});
        outputOf(u"xrandr"_s, {u"--setmonitor"_s, u"right"_s, u"640/170x900/240+640+0"_s, u"none"_s});
    }

    bool isIn(const QRect &monitor)
    {
        const Control window = see(u"frmSet/frmSet"_s);
        return window.shown && monitor.contains(view->clientRectangle(window.id));
    }
};

} // namespace

TEST_P(SmallScreenTest, everyWindowOfTheLauncherFits)
{
    writeApp(u"ask"_s, {u"input.text \"who\",\"Your name?\""_s, u"os.tips \"Hello\""_s});
    startLauncher();
    expectWhole(u"frmSet"_s);
    hands->key(u"F1"_s);
    expectWhole(u"manual"_s);
    leave(u"manual"_s);
    hands->key(u"shift+F1"_s);
    expectWhole(u"keysheet"_s);
    leave(u"keysheet"_s);

    for (int i = 0; i < 3; ++i)
        hands->key(u"Tab"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/menuimg"_s));
    hands->key(u"Return"_s);
    expectWhole(u"hotkey"_s);
    leave(u"hotkey"_s);

    hands->key(u"ctrl+n"_s);
    ASSERT_TRUE(appears(u"frmSet/addeditbox"_s));
    expectWhole(u"frmSet"_s);
    hands->key(u"Escape"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Down"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/List"_s));
    hands->key(u"F2"_s);
    ASSERT_TRUE(appears(u"frmSet/editnamebox"_s));
    expectWhole(u"frmSet"_s);
    hands->key(u"Escape"_s);

    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->type(u"ask"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    expectWhole(u"shurubox"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
    expectWhole(u"shurubox"_s);

    writeRequest();
    expectWhole(u"asks"_s);
}

TEST_P(SmallScreenTest, theQuestionForANameFits)
{
    writeApp(u"chess"_s);
    startLauncher();
    writeRequest();
    ASSERT_TRUE(appears(u"shurubox/renamebox"_s));
    expectWhole(u"shurubox"_s);
    expectInside(u"shurubox/cancel"_s);
    expectInside(u"shurubox/Label3"_s);
    leave(u"shurubox"_s);
}

// Also where it cannot fetch its page, which here nobody serves.
TEST_P(SmallScreenTest, theStoreFits)
{
    startLauncher();
    hands->key(u"Tab"_s);
    hands->key(u"Tab"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/store"_s));
    hands->key(u"Return"_s);
    expectWholeWindow("Plum", see(u"frmSet/frmSet"_s).id);
}

TEST_P(SmallScreenTest, theDownloadHelperFits)
{
    QProcess download;
    server().start(download, QStringLiteral(PLUM_DOWNLOAD_HELPER),
        {u"http://127.0.0.1:8642/none@@@%1@@@../none@@@A download"_s.arg(programFolder())});
    expectWholeWindow("A download");
    download.terminate();
    EXPECT_TRUE(download.waitForFinished(60'000));
}

TEST_P(SmallScreenTest, theBrowserHelperFits)
{
    const QString program = QStringLiteral(PLUM_BROWSER_HELPER);
    if (program.isEmpty())
        GTEST_SKIP() << "built without a browser engine: pages open in the default browser";
    QProcess browser;
    server().start(browser, program, {u"_tarnwick_html_|||<h1>Hi</h1>|||A page"_s});
    expectWholeWindow("A page");
    browser.terminate();
    EXPECT_TRUE(browser.waitForFinished(60'000));
}

TEST_F(MonitorsTest, theLauncherComesUpWhereThePointerIs)
{
    hands->moveTo(right.center());
    startLauncher();
    EXPECT_TRUE(eventually([&] { return isIn(right); }));
    hands->key(u"alt+z"_s);
    ASSERT_TRUE(disappears(u"frmSet/frmSet"_s));
    hands->moveTo(left.center());
    hands->key(u"alt+z"_s);
    ASSERT_TRUE(appears(u"frmSet/frmSet"_s));
    EXPECT_TRUE(eventually([&] { return isIn(left); }));
}

} // namespace plum
