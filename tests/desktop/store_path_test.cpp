#include "desktop/support/store_desktop.h"

#include <QRandomGenerator>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator(7).generate(bytes.begin(), bytes.end());
    return bytes;
}

// The way of a person from the launcher to an app that was not there before.
class StorePath : public StoreDesktop
{
protected:
    void SetUp() override
    {
        StoreDesktop::SetUp();
        shop->addApp(u"parcel"_s,
            (u"//guide:A parcel from far away\r\nset.word \"unpacked\"\r\n"_s + resultLine(u"\"word\""_s)
                + u"\r\n"_s)
                .toUtf8(),
            content);
    }

    void openStore()
    {
        startLauncher();
        click(u"frmSet/store"_s);
        ASSERT_TRUE(pageShows(u"document.readyState == 'complete' && !!document.querySelector('#search')"_s));
    }

    void searchFor(const QString &word, int found)
    {
        clickInPage(u"#search"_s);
        ASSERT_TRUE(pageShows(u"document.activeElement.id == 'search'"_s));
        hands->type(word);
        ASSERT_TRUE(
            pageShows(u"document.querySelectorAll(\".card:not([hidden])\").length == %1"_s.arg(found)));
    }

    // The strip at the window's lower edge, with a bar that has begun to fill.
    bool showsProgress()
    {
        const xcb_window_t window = view->windowTitled(u"开始接收数据..."_s.toUtf8());
        if (window == XCB_NONE)
            return false;
        constexpr uint32_t filled = 0x85326F;
        constexpr int stripHeight = 60; // pixels, the window's edge included
        constexpr int barLeft = 20;
        const QRect place = view->clientRectangle(window);
        for (int y = place.bottom() - stripHeight; y < place.bottom(); ++y) {
            if (view->pixel({place.left() + barLeft, y}) == filled)
                return true;
        }
        return false;
    }

    void runParcel()
    {
        // The window manager may give the keyboard back late when a box has closed.
        xcb_window_t window = XCB_NONE;
        ASSERT_TRUE(eventually([&] {
            window = view->windowTitled("Download completed");
            return window != XCB_NONE;
        }));
        ASSERT_TRUE(bringToFront(window));
        hands->key(u"Escape"_s);
        ASSERT_TRUE(eventually([&] { return !hasWindow(u"Download completed"_s); }));
        bringUpLauncher();
        hands->type(u"parcel"_s);
        ASSERT_TRUE(lists(u"frmSet/List2"_s, {u"parcel"_s}));
        hands->key(u"Return"_s);
        EXPECT_TRUE(eventually([&] { return results() == "unpacked\r\n"; }));
    }

    const QByteArray content = noise(1'500'000);
};

} // namespace

TEST_F(StorePath, anAppIsFoundInTheStoreInstalledAndRun)
{
    ASSERT_TRUE(shop->serve(u"limit_rate 300k;"_s));
    openStore();
    searchFor(u"far away"_s, 1);
    clickInPage(u".card:not([hidden]) .install"_s);
    ASSERT_TRUE(shows(u"asks/keyword"_s, u"parcel"_s));
    EXPECT_EQ(see(u"asks/asks"_s).title, u"Plum asks"_s);
    EXPECT_FALSE(QFile::exists(programFolder() + u"/parcel.wfp.dl"_s));
    agreeWithEnter();
    EXPECT_TRUE(eventually([&] { return showsProgress(); }));
    answer(u"installed successfully"_s);
    EXPECT_TRUE(eventually([&] { return hasWindow(u"Download completed"_s); }));
    EXPECT_EQ(read(u"config/apps/parcel/content"_s), content);
    EXPECT_TRUE(eventually([&] { return see(u"frmSet/List"_s).items.contains(u"parcel"_s); }));
    runParcel();
}

TEST_F(StorePath, aDownloadCutInTheMiddleGoesOnWhereItStopped)
{
    ASSERT_TRUE(shop->serve(u"limit_rate 300k;"_s));
    openStore();
    searchFor(u"parcel"_s, 1);
    clickInPage(u".card:not([hidden]) .install"_s);
    agreeToInstall(u"parcel"_s);
    ASSERT_TRUE(eventually([&] { return read(u"parcel.wfp.dl"_s).size() > content.size() / 10; }));
    shop->cut();
    ASSERT_TRUE(eventually([&] { return hasWindow(u"下载被终止..."_s); }));
    const QByteArray kept = read(u"parcel.wfp.dl"_s);
    EXPECT_LT(kept.size(), content.size());
    EXPECT_FALSE(QFile::exists(programFolder() + u"/config/apps/parcel"_s));
    EXPECT_FALSE(see(u"frmSet/List"_s).items.contains(u"parcel"_s));

    ASSERT_TRUE(shop->resume(u"limit_rate 300k;"_s));
    clickInPage(u".card:not([hidden]) .install"_s);
    agreeToInstall(u"parcel"_s);
    ASSERT_TRUE(eventually([&] { return read(u"parcel.wfp.dl"_s).size() > kept.size(); }));
    EXPECT_TRUE(read(u"parcel.wfp.dl"_s).startsWith(kept));
    answer(u"installed successfully"_s);
    EXPECT_EQ(read(u"config/apps/parcel/content"_s), content);
    runParcel();
}

TEST_F(StorePath, aServerThatFallsSilentDelaysADownloadOnly)
{
    ASSERT_TRUE(shop->serve(u"limit_rate 300k;"_s));
    openStore();
    searchFor(u"parcel"_s, 1);
    clickInPage(u".card:not([hidden]) .install"_s);
    agreeToInstall(u"parcel"_s);
    ASSERT_TRUE(eventually([&] { return read(u"parcel.wfp.dl"_s).size() > content.size() / 10; }));
    shop->fallSilent();
    // What was on its way arrives, then nothing does.
    qsizetype arrived = 0;
    ASSERT_TRUE(eventually([&] {
        QThread::msleep(300);
        const qsizetype before = std::exchange(arrived, read(u"parcel.wfp.dl"_s).size());
        return arrived == before;
    }));
    EXPECT_LT(arrived, content.size());
    EXPECT_TRUE(hasWindow(u"开始接收数据..."_s));
    shop->speakAgain();
    answer(u"installed successfully"_s);
    EXPECT_EQ(read(u"config/apps/parcel/content"_s), content);
}

} // namespace plum
