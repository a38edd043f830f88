#include "store_bench.h"

#include "desktop/support/page_eyes.h"
#include "library/app_list_file.h"
#include "library/package_installer.h"
#include "store/loaded_store_transfers.h"
#include "store/store_process.h"
#include "support/shop.h"
#include "support/x_server.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <csignal>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::test::Shop;
using plum::test::TemporaryFiles;
using plum::test::waitUntil;

namespace {

class StoreWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(screen.isReady());
        screen.useAsDisplay();
        qunsetenv("QTWEBENGINE_REMOTE_DEBUGGING");
        platform.paths().folder = files.folder();
        QDir::setCurrent(files.folder());
        QObject::connect(&view, &plum::StoreView::pageCompleted, &view, [this] { ++completed; });
        QObject::connect(&view, &plum::StoreView::closeRequested, &view, [this] { ++closed; });
    }

    bool show(const QUrl &address)
    {
        completed = 0;
        view.navigate(address);
        view.showWindow();
        return waitUntil([this] { return completed > 0; }) && waitUntil([this] { return hasFocus(); });
    }

    // The page is asked for where somebody hangs up, and then nobody listens.
    bool failsToShow(const QUrl &address)
    {
        QTcpServer hangsUp;
        if (!hangsUp.listen(QHostAddress::LocalHost, static_cast<quint16>(address.port())))
            return false;
        view.navigate(address);
        view.showWindow();
        const bool isAsked = waitUntil([&hangsUp] { return hangsUp.hasPendingConnections(); });
        hangsUp.close();
        return isAsked && waitUntil([] { return hasFocus(); });
    }

    static QString xdotool(const QStringList &arguments)
    {
        QProcess tool;
        tool.start(u"xdotool"_s, arguments);
        tool.waitForFinished();
        return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
    }

    // The window manager and the X server agree that keys go to the store window.
    static bool hasFocus(const QString &title = u"Plum"_s)
    {
        return xdotool({u"getactivewindow"_s, u"getwindowname"_s}) == title
            && xdotool({u"getwindowfocus"_s, u"getwindowname"_s}) == title;
    }
    // Whether a window with exactly this title is there.
    static bool isVisible(const QString &title)
    {
        // xdotool's name is a regular expression.
        QString pattern = u'^' + title;
        static const QRegularExpression special(u"[^A-Za-z0-9^]"_s);
        pattern.replace(special, u"."_s);
        const QString found = xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, pattern});
        const QStringList windows = found.split(u'\n', Qt::SkipEmptyParts);
        return std::ranges::any_of(windows, [&title](const QString &window) {
            return xdotool({u"getwindowname"_s, window}) == title;
        });
    }
    static void press(const QString &keys)
    {
        xdotool(QStringList{u"key"_s, u"--delay"_s, u"30"_s} + keys.split(u' '));
    }

    static QRect activeGeometry()
    {
        const QString said = xdotool({u"getactivewindow"_s, u"getwindowgeometry"_s, u"--shell"_s});
        const auto number = [&said](const QString &name) {
            return QRegularExpression(name + u"=(-?\\d+)"_s).match(said).captured(1).toInt();
        };
        return {number(u"X"_s), number(u"Y"_s), number(u"WIDTH"_s), number(u"HEIGHT"_s)};
    }
    static void movePointer(QPoint to)
    {
        xdotool({u"mousemove"_s, QString::number(to.x()), QString::number(to.y())});
    }

    // The browser's process takes its keyboard focus a little after its window: a key may come too early.
    static bool pressUntil(const QString &key, const std::function<bool()> &condition)
    {
        QDeadlineTimer again(0);
        return waitUntil([&] {
            if (!condition() && again.hasExpired()) {
                press(key);
                again.setRemainingTime(1000);
            }
            return condition();
        });
    }

    // To be called before the window is first shown: from then on hasKeyboard() knows.
    void openEyes()
    {
        eyesPort = static_cast<quint16>(plum::test::freePort());
        qputenv("QTWEBENGINE_REMOTE_DEBUGGING", QByteArray::number(eyesPort));
    }

    // The page of that address has the keyboard; the browser's process takes it a little after its window.
    bool pageHasKeyboard(const QString &address) const
    {
        return hasFocus() && plum::PageEyes(eyesPort, address).see(u"document.hasFocus()"_s).toBool();
    }

    bool pageGetsKeyboard(const QString &address) const
    {
        return waitUntil([&] { return pageHasKeyboard(address); });
    }

    bool hasEvent(const QString &line) const { return platform.log.lines().contains(line); }
    bool eventHolds(const QString &text) const { return platform.log.lines().join(u'\n').contains(text); }

    plum::XServer screen{{1280, 800}, {u"openbox"_s}};
    TemporaryFiles files;
    Shop shop;
    plum::recording::RecordingPlatform platform;
    plum::StoreProcess view{{.program = QStringLiteral(PLUM_STORE_WINDOW),
        .downloadBase = shop.url(u"/plum/download/"_s),
        .keptHidden = std::chrono::milliseconds(300)}};
    plum::LoadedStoreTransfers transfers{platform.paths(), platform.textCodec()};
    plum::test::RecordingHost host{platform.log};
    plum::ClipboardChannel channel{platform.clipboard()};
    plum::AppFolders folders{platform.paths()};
    plum::AppListFile listFile{platform.paths(), platform.textCodec()};
    plum::PackageInstaller installer{{platform.paths(), platform.textCodec(), {folders, listFile, {}}}};
    plum::webbox store{{view, transfers, channel, host, platform.shell(), platform.paths(), installer,
        {shop.url(), shop.url(u"/plum/download/"_s)}}};
    int completed = 0;
    int closed = 0;
    quint16 eyesPort = 0;
};

// A page with one link, which has the focus.
QByteArray pageWithLink(const QByteArray &attributes, const QByteArray &rest = {})
{
    return "<!doctype html><meta charset=utf-8><title>page</title><a id=a " + attributes
        + ">link</a><script>document.getElementById('a').focus()</script>" + rest;
}

} // namespace

TEST_F(StoreWindow, SearchingAndChoosingAPackageInstallsIt)
{
    openEyes();
    ASSERT_TRUE(shop.serve());
    store.openStore();
    ASSERT_TRUE(waitUntil([this] { return completed > 0; }));
    ASSERT_TRUE(pageGetsKeyboard({}));

    // Past the brand and the three pages to the search; then the card's title and its button.
    press(u"Tab Tab Tab Tab Tab t i d y Tab Tab Return"_s);
    ASSERT_TRUE(waitUntil([this] { return eventHolds(u"ask install tidy"_s); }));
    EXPECT_FALSE(QFileInfo::exists(files.folder() + u"/tidy.wfp.dl"_s));
    host.agree();
    ASSERT_TRUE(waitUntil([this] { return hasEvent(u"add app tidy"_s); }));
    EXPECT_TRUE(hasEvent(u"message installed successfully (system-modal)"_s));
    QFile original(QStringLiteral(PLUM_APPS "/tidy/main.wf"));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    EXPECT_EQ(files.read(u"config/apps/tidy/main.wf"_s), original.readAll());
    EXPECT_TRUE(waitUntil([] { return isVisible(u"Download completed"_s); }));
}

TEST_F(StoreWindow, ADownloadCutInTheMiddleGoesOnLater)
{
    QByteArray content(3'000'000, Qt::Uninitialized);
    QRandomGenerator(7).generate(content.begin(), content.end());
    shop.addApp(u"big"_s, "os.tips \"x\"\r\n", content);
    ASSERT_TRUE(shop.serve(u"limit_rate 500k;"_s));
    ASSERT_TRUE(show(shop.url(u"/plum/workflow_in/index.html"_s)));

    float percent = 0;
    int status = 0;
    QObject::connect(&transfers, &plum::StoreTransfers::Progress, &store, [&](float now) { percent = now; });
    QObject::connect(&transfers, &plum::StoreTransfers::Status, &store,
        [&](plum::DownloadStatus code) { status = static_cast<int>(code); });
    store.XzSet(plum::InstallFlag::ByName, u"big"_s);
    ASSERT_TRUE(waitUntil([&] { return percent > 10; }));
    shop.cut();
    ASSERT_TRUE(waitUntil([&] { return status == 4; }));
    EXPECT_TRUE(waitUntil([] { return isVisible(u"下载被终止..."_s); }));
    EXPECT_FALSE(QFileInfo::exists(files.folder() + u"/config/apps/big"_s));
    const qint64 kept = QFileInfo(files.folder() + u"/big.wfp.dl"_s).size();
    EXPECT_GT(kept, 0);

    ASSERT_TRUE(shop.resume());
    percent = 0;
    store.XzSet(plum::InstallFlag::ByName, u"big"_s);
    ASSERT_TRUE(waitUntil([this] { return hasEvent(u"add app big"_s); }));
    EXPECT_EQ(files.read(u"config/apps/big/content"_s), content);
}

TEST_F(StoreWindow, EscapeHidesItAndTheProcessEndsAWhileLater)
{
    shop.addPage(u"page.html"_s, pageWithLink("href=/"));
    ASSERT_TRUE(shop.serve());
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    const qint64 process = view.processId();
    EXPECT_NE(process, 0);

    ASSERT_TRUE(pressUntil(u"Escape"_s, [this] { return closed > 0; }));
    EXPECT_FALSE(channel.isEnabled());
    EXPECT_TRUE(waitUntil([this] { return view.processId() == 0; }));

    // It comes back in a new process.
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    EXPECT_NE(view.processId(), process);
}

TEST_F(StoreWindow, TheWindowManagersRequestHidesIt)
{
    shop.addPage(u"page.html"_s, pageWithLink("href=/"));
    ASSERT_TRUE(shop.serve());
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    // With this key openbox asks the window to close.
    ASSERT_TRUE(pressUntil(u"alt+F4"_s, [this] { return closed > 0; }));
    EXPECT_TRUE(waitUntil([] { return !isVisible(u"Plum"_s); }));
}

TEST_F(StoreWindow, ItsPictureHidesItAndItsBarMovesIt)
{
    shop.addPage(u"page.html"_s, pageWithLink("href=/"));
    ASSERT_TRUE(shop.serve());
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));

    const QRect before = activeGeometry();
    const QPoint grip = before.topLeft() + QPoint(200, 18);
    movePointer(grip);
    xdotool({u"mousedown"_s, u"1"_s});
    int step = 0; // the window manager takes the window over with one of the first motions
    EXPECT_TRUE(waitUntil([&] {
        movePointer(grip + QPoint(-10 - ++step % 2, 10));
        return activeGeometry() != before;
    }));
    movePointer(grip + QPoint(-60, 40));
    // It may have been taken over a motion late.
    const auto isClose = [](QPoint off) { return off.manhattanLength() <= 24; };
    EXPECT_TRUE(
        waitUntil([&] { return isClose(activeGeometry().topLeft() - before.topLeft() - QPoint(-60, 40)); }));
    EXPECT_EQ(activeGeometry().size(), before.size());
    xdotool({u"mouseup"_s, u"1"_s});

    const QPoint picture = activeGeometry().topRight() + QPoint(-20, 18);
    movePointer(picture);
    xdotool({u"click"_s, u"1"_s});
    ASSERT_TRUE(waitUntil([this] { return closed > 0; }));
    EXPECT_FALSE(channel.isEnabled());
    EXPECT_TRUE(waitUntil([] { return !isVisible(u"Plum"_s); }));
}

TEST_F(StoreWindow, AProcessThatDiesCountsAsClosed)
{
    shop.addPage(u"page.html"_s, pageWithLink("href=/"));
    ASSERT_TRUE(shop.serve());
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    ::kill(static_cast<pid_t>(view.processId()), SIGKILL);
    ASSERT_TRUE(waitUntil([this] { return closed > 0; }));
    EXPECT_TRUE(show(shop.url(u"/page.html"_s)));
}

TEST_F(StoreWindow, ALinkForANewWindowOpensInTheDefaultBrowserOnceThePageHasLoaded)
{
    shop.addPage(u"page.html"_s, pageWithLink("target=_blank href=https://example.org/outside"));
    ASSERT_TRUE(shop.serve());
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    EXPECT_TRUE(pressUntil(u"Return"_s, [this] { return eventHolds(u"https://example.org/outside"_s); }));
}

TEST_F(StoreWindow, ALinkForANewWindowOpensOneWhileThePageIsLoading)
{
    QTcpServer neverAnswers; // keeps the page from being complete
    ASSERT_TRUE(neverAnswers.listen(QHostAddress::LocalHost));
    shop.addPage(u"inner.html"_s, "<!doctype html><title>inner page</title>inner");
    shop.addPage(u"page.html"_s,
        pageWithLink("target=_blank href=/inner.html",
            "<img src=http://127.0.0.1:" + QByteArray::number(neverAnswers.serverPort()) + "/>"));
    ASSERT_TRUE(shop.serve());
    view.navigate(shop.url(u"/page.html"_s));
    view.showWindow();
    ASSERT_TRUE(waitUntil([] { return hasFocus(); }));
    EXPECT_TRUE(pressUntil(u"Return"_s, [] { return isVisible(u"inner page (store page)"_s); }));
    EXPECT_EQ(completed, 0);
    EXPECT_TRUE(platform.log.lines().isEmpty());
}

TEST_F(StoreWindow, ASecondLinkTakesThePlaceOfAWindowThatIsStillComing)
{
    QTcpServer neverAnswers; // keeps the store's page and the first link's from being complete
    ASSERT_TRUE(neverAnswers.listen(QHostAddress::LocalHost));
    const QByteArray silent = "http://127.0.0.1:" + QByteArray::number(neverAnswers.serverPort());
    shop.addPage(u"second.html"_s, "<!doctype html><title>second page</title>second");
    shop.addPage(u"page.html"_s,
        pageWithLink("target=_blank href=" + silent + "/first",
            "<a target=_blank href=/second.html>second</a><img src=" + silent + "/picture>"));
    openEyes();
    ASSERT_TRUE(shop.serve());
    view.navigate(shop.url(u"/page.html"_s));
    view.showWindow();
    ASSERT_TRUE(waitUntil([] { return hasFocus(); }));
    const QStringList pageWindows{u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"store page"_s};
    ASSERT_TRUE(pressUntil(u"Return"_s, [&] { return !xdotool(pageWindows).isEmpty(); }));
    // The new window is seen before the window manager has brought it forward.
    ASSERT_TRUE(waitUntil([this] {
        if (pageHasKeyboard(u"/page.html"_s))
            return true;
        xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Plum$"_s, u"windowactivate"_s});
        return false;
    }));
    press(u"Tab Return"_s);
    EXPECT_TRUE(waitUntil([] { return isVisible(u"second page (store page)"_s); }));
    EXPECT_EQ(xdotool(pageWindows).count(u'\n'), 0); // one window
}

TEST_F(StoreWindow, ALinkToAPackageForANewWindowAsksToo)
{
    shop.addPage(u"page.html"_s, pageWithLink("target=_blank href=/plum/download/hello.wfp"));
    ASSERT_TRUE(shop.serve());
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    EXPECT_TRUE(pressUntil(u"Return"_s, [this] { return eventHolds(u"ask install hello"_s); }))
        << qPrintable(platform.log.lines().join(u'\n'));
}

TEST_F(StoreWindow, APageReadsNoFilesAndGetsNoPermissions)
{
    shop.addPage(u"page.html"_s, pageWithLink("target=_blank href=https://example.org/unset", R"(<script>
            const link = document.getElementById('a');
            (async () => {
                let file = 'refused', place = 'granted';
                try { await fetch('file:///etc/passwd'); file = 'read'; } catch (e) { }
                await new Promise(done => navigator.geolocation.getCurrentPosition(done,
                    error => { place = error.code === 1 ? 'denied' : 'code' + error.code; done(); }));
                const notes = await Notification.requestPermission();
                link.href = 'https://example.org/file-' + file + '-place-' + place + '-notes-' + notes;
            })();</script>)"));
    ASSERT_TRUE(shop.serve());
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    EXPECT_TRUE(pressUntil(u"Return"_s, [this] {
        return eventHolds(u"file-refused-place-denied-notes-denied"_s);
    })) << qPrintable(platform.log.lines().join(u'\n'));
}

TEST_F(StoreWindow, APageFromTheClipboardArrivesWholeHoweverLongItIs)
{
    openEyes();
    constexpr int much = 3'000'000; // characters; more than a data: address could carry
    const QByteArray html
        = "<!doctype html><p>\u4F60 \"\\\u2028</p>" + QByteArray(much, 'x') + "<script>let rule = 1</script>";
    platform.clipboard().content = u"##tarnwick:send##"_s + QString::fromUtf8(html);
    Q_EMIT platform.clipboard().changed();
    ASSERT_TRUE(waitUntil([this] { return completed > 0 && hasFocus(u"A page from another program"_s); }));
    EXPECT_FALSE(channel.isEnabled());
    const plum::PageEyes page(eyesPort);
    EXPECT_TRUE(waitUntil(
        [&] { return page.see(u"document.querySelector('p').textContent.length"_s).toInt() == 5; }));
    EXPECT_TRUE(waitUntil(
        [&] { return page.see(u"document.body.textContent.length > 3e6 && rule === 1"_s).toBool(); }));
    EXPECT_TRUE(waitUntil([&] { return page.see(u"document.compatMode"_s).toString() == u"CSS1Compat"_s; }));
}

TEST_F(StoreWindow, AStoreThatDoesNotAnswerIsTriedAgainWithF5)
{
    shop.addPage(u"page.html"_s, pageWithLink("href=/"));
    ASSERT_TRUE(failsToShow(shop.url(u"/page.html"_s)));
    ASSERT_TRUE(shop.serve());
    EXPECT_TRUE(pressUntil(u"F5"_s, [this] { return completed > 0; }));
}

TEST_F(StoreWindow, AStoreThatDoesNotAnswerIsTriedAgainWithItsButton)
{
    shop.addPage(u"page.html"_s, pageWithLink("href=/"));
    ASSERT_TRUE(failsToShow(shop.url(u"/page.html"_s)));
    ASSERT_TRUE(shop.serve());
    EXPECT_TRUE(pressUntil(u"Return"_s, [this] { return completed > 0; })); // Retry has the keyboard
}

TEST_F(StoreWindow, ACalledProgramsPageSizesTheWindow)
{
    shop.addPage(u"page.html"_s, pageWithLink("href=/"));
    ASSERT_TRUE(shop.serve());
    store.setBrowserWidth(425);
    store.setBrowserHeight(325);
    store.layOut();
    ASSERT_TRUE(show(shop.url(u"/page.html"_s)));
    const QString geometry = xdotool({u"getactivewindow"_s, u"getwindowgeometry"_s, u"--shell"_s});
    EXPECT_TRUE(geometry.contains(u"WIDTH=433"_s)) << qPrintable(geometry); // with the edges that resize it
}
