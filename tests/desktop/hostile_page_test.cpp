#include "desktop/support/store_desktop.h"

#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>

#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// In bytes: that of the process or of one below it, whichever has most.
qint64 largestMemory(qint64 process)
{
    const QString folder = u"/proc/%1/"_s.arg(process);
    const auto words = [](const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().simplified().split(' ') : QByteArrayList();
    };
    qint64 most = words(folder + u"statm"_s).value(1).toLongLong() * sysconf(_SC_PAGESIZE);
    for (const QString &thread : QDir(folder + u"task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        for (const QByteArray &child : words(folder + u"task/%1/children"_s.arg(thread))) {
            if (!child.isEmpty())
                most = std::max(most, largestMemory(child.toLongLong()));
        }
    }
    return most;
}

// A store whose pages try what a store's pages have no business to do. "BASE" in a page is the store's
// address, "ELSEWHERE" that of another server.
class HostilePage : public StoreDesktop
{
protected:
    void SetUp() override
    {
        StoreDesktop::SetUp();
        ASSERT_TRUE(m_elsewhere.listen(QHostAddress::LocalHost));
        QObject::connect(&m_elsewhere, &QTcpServer::newConnection, &m_elsewhere, [this] { ++m_visits; });
        ASSERT_TRUE(shop->serve(u"location /go { return 302 /plum/download/hello.wfp; }"_s));
    }

    // Puts a page in the catalogue's place.
    void serve(QByteArray html)
    {
        html.replace("BASE", shop->url().toEncoded());
        html.replace("ELSEWHERE", elsewhere());
        html.replace("SECRET", QFile::encodeName(programFolder()) + "/secret.txt");
        shop->addPage(u"plum/workflow_in/index.html"_s, html);
    }

    void openStore(const QByteArray &html)
    {
        serve(html);
        startLauncher();
        click(u"frmSet/store"_s);
    }

    // Nothing is installed, asked, or on its way.
    void expectNothingInstalled()
    {
        EXPECT_FALSE(isShown(u"asks/asks"_s));
        EXPECT_FALSE(isShown(u"shurubox/shurubox"_s));
        EXPECT_FALSE(QFile::exists(programFolder() + u"/config/apps/hello"_s));
        EXPECT_FALSE(QFile::exists(programFolder() + u"/hello.wfp"_s));
        EXPECT_FALSE(QFile::exists(programFolder() + u"/hello.wfp.dl"_s));
    }

    void expectTheLauncherAnswers()
    {
        // A new window is listed a moment before it is given the keyboard.
        ASSERT_TRUE(bringToFront(storeWindow()));
        bringUpLauncher();
        clearEntry();
        hands->type(u"abc"_s);
        EXPECT_TRUE(shows(u"frmSet/Text8"_s, u"abc"_s));
        hands->key(u"alt+z"_s);
        EXPECT_TRUE(disappears(u"frmSet/frmSet"_s));
        hands->key(u"alt+z"_s);
        EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
    }

    // The launcher's own window has the same title.
    xcb_window_t storeWindow() { return view->windowTitled("Plum", see(u"frmSet/frmSet"_s).id); }
    bool isStoreOpen() { return storeWindow() != XCB_NONE; }

    void closeStore()
    {
        const xcb_window_t window = storeWindow();
        ASSERT_TRUE(bringToFront(window));
        hands->key(u"Escape"_s);
        EXPECT_TRUE(eventually([&] { return !isStoreOpen(); }));
    }

    int storeWindows()
    {
        QProcess xdotool;
        server().start(
            xdotool, u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"\\(store page\\)"_s});
        xdotool.waitForFinished();
        return static_cast<int>(xdotool.readAllStandardOutput().count('\n'));
    }

    QByteArray elsewhere() const
    {
        return "http://127.0.0.1:" + QByteArray::number(m_elsewhere.serverPort());
    }
    int visits() const { return m_visits; }

private:
    QTcpServer m_elsewhere;
    int m_visits = 0;
};

// Each way is tried in a page of its own life: one navigation must not end the try before it. The marker at
// the end is a link that the user really clicks on.
constexpr char waysToPretend[] = R"html(<!doctype html><meta charset=utf-8><title>ways</title>
<body style="margin:0"><a id=package href="BASE/plum/download/hello.wfp">package</a>
<a id=blank target=_blank href="BASE/plum/download/hello.wfp">package in a window</a>
<a id=outside target=_blank href="https://example.org/pretended">outside</a>
<form id=form action="BASE/plum/download/hello.wfp"></form>
<form id=formBlank target=_blank action="https://example.org/form"></form>
<iframe id=top srcdoc="<a id=a target=_top href='BASE/plum/download/hello.wfp'>x</a>"></iframe>
<p><a id=marker target=_blank href="https://example.org/marker" style="font-size:60px">marker</a></p>
<script>
const at = id => document.getElementById(id);
const link = 'BASE/plum/download/hello.wfp';
const ways = [
    () => at('package').click(),
    () => at('package').dispatchEvent(new MouseEvent('click', {bubbles: true, cancelable: true, view: window})),
    () => location = link,
    () => location.assign(link),
    () => location.replace(link),
    () => at('top').contentDocument.getElementById('a').click(),
    () => { at('blank').focus(); window.open(link); },
    () => at('blank').click(),
    () => at('form').submit(),
    () => { const m = document.createElement('meta'); m.httpEquiv = 'refresh'; m.content = '0;url=' + link;
            document.head.append(m); },
    () => location = 'BASE/go',
    () => { const f = document.createElement('iframe'); f.src = link; document.body.append(f); },
    () => { const a = at('package').cloneNode(); a.download = 'x'; document.body.append(a); a.click(); },
    () => { const a = at('package').cloneNode(); a.href = 'BASE/plum/download/..%2Fhello.wfp'; a.click(); },
    () => window.open(link, '_top'),
    () => at('outside').click(),
    () => { at('outside').focus(); for (let i = 0; i < 50; ++i) window.open('https://example.org/' + i); },
    () => at('outside').dispatchEvent(new MouseEvent('click', {ctrlKey: true, bubbles: true, view: window})),
    () => at('formBlank').submit(),
    () => at('package').dispatchEvent(new KeyboardEvent('keydown', {key: 'Enter', keyCode: 13, bubbles: true})),
];
window.tried = 0;
const next = () => { if (window.tried === ways.length) return;
    try { ways[window.tried](); } catch (e) { } ++window.tried; setTimeout(next, 60); };
addEventListener('load', () => setTimeout(next, 60));
</script>)html";

} // namespace

TEST_F(HostilePage, aScriptsClicksNeitherInstallNorOpenAnything)
{
    openStore(waysToPretend);
    ASSERT_TRUE(pageShows(u"window.tried === ways.length"_s));
    EXPECT_TRUE(opened().isEmpty());
    expectNothingInstalled();
    // What a person does then comes behind everything that the scripts may have brought about.
    clickInPage(u"#marker"_s);
    ASSERT_TRUE(eventually([&] { return !opened().isEmpty(); }));
    EXPECT_EQ(opened(), QStringList{u"https://example.org/marker"_s});
    expectNothingInstalled();
    expectTheLauncherAnswers();
}

TEST_F(HostilePage, aClickIsGoodForOneWindowOfFifty)
{
    openStore(R"html(<!doctype html><title>flood</title><body style="margin:0">
<a id=a href="https://example.org/one">a</a> <button id=b style="font-size:60px">flood</button><script>
window.clicks = 0;
document.getElementById('b').onclick = () => { document.getElementById('a').focus();
    for (let i = 0; i < 50; ++i) window.open('https://example.org/' + i); ++window.clicks; };</script>)html");
    ASSERT_TRUE(pageShows(u"document.readyState == 'complete' && !!document.querySelector('#b')"_s));
    for (int clicks = 1; clicks <= 3; ++clicks) {
        clickInPage(u"#b"_s);
        ASSERT_TRUE(pageShows(u"window.clicks === %1"_s.arg(clicks)));
        ASSERT_TRUE(eventually([&] { return opened().size() >= clicks; }));
        EXPECT_EQ(opened(), QStringList(clicks, u"https://example.org/one"_s));
    }
    expectNothingInstalled();
}

TEST_F(HostilePage, aClickAsksOneQuestionAndCancelIsTheEndOfIt)
{
    openStore(R"html(<!doctype html><title>again</title><body style="margin:0">
<a id=p href="BASE/plum/download/hello.wfp"></a> <button id=b style="font-size:60px">ask</button><script>
window.clicks = 0;
document.getElementById('b').onclick = () => { ++window.clicks;
    for (let i = 0; i < 50; ++i) document.getElementById('p').click();
    setInterval(() => document.getElementById('p').click(), 50); };</script>)html");
    ASSERT_TRUE(pageShows(u"document.readyState == 'complete' && !!document.querySelector('#b')"_s));
    clickInPage(u"#b"_s);
    ASSERT_TRUE(shows(u"asks/keyword"_s, u"hello"_s));
    ASSERT_TRUE(getsFocus(u"asks/install"_s));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(eventually([&] { return !isShown(u"asks/asks"_s); }));
    // The page goes on asking for as long as this takes.
    ASSERT_TRUE(
        pageShows(u"(window.since = window.since || Date.now(), Date.now() - window.since > 1500)"_s));
    expectNothingInstalled();
    expectTheLauncherAnswers();
}

TEST_F(HostilePage, oneWindowOfALoadingPageIsAllAndGoesWithTheStore)
{
    QTcpServer silent; // keeps the page from being complete
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    shop->addPage(u"inner.html"_s, "<!doctype html><title>inner</title>inner");
    openStore(R"html(<!doctype html><title>loading</title><body style="margin:0">
<button id=b autofocus style="font-size:60px">flood</button><script>
for (let i = 0; i < 50; ++i) window.open('BASE/inner.html');
document.getElementById('b').onclick = () => { for (let i = 0; i < 50; ++i) window.open('BASE/inner.html'); };
</script><img src="http://127.0.0.1:)html"
        + QByteArray::number(silent.serverPort()) + "/\">");
    ASSERT_TRUE(pageShows(u"!!document.querySelector('#b')"_s));
    EXPECT_EQ(storeWindows(), 0);
    // The picture of a loading page is in front of it: only keys reach it.
    QDeadlineTimer again(0); // the browser takes the keyboard a little after its window
    ASSERT_TRUE(eventually([&] {
        if (storeWindows() == 0 && again.hasExpired()) {
            hands->key(u"Return"_s);
            again.setRemainingTime(1000);
        }
        return storeWindows() > 0;
    }));
    ASSERT_TRUE(eventually([&] { return hasWindow(u"inner (store page)"_s); }));
    EXPECT_EQ(storeWindows(), 1);
    closeStore();
    EXPECT_TRUE(eventually([&] { return storeWindows() == 0; }));
    expectNothingInstalled();
}

TEST_F(HostilePage, framesFilesAndDataAddressesReachNothing)
{
    write(u"secret.txt"_s, "secret");
    openStore(R"html(<!doctype html><title>files</title><body style="margin:0">
<p><a id=marker target=_blank href="https://example.org/marker" style="font-size:60px">m</a><script>
window.seen = []; window.done = false;
// Hidden, for the pointer would be theirs where they are seen.
const frame = src => { const f = document.createElement('iframe'); f.hidden = true; f.src = src; document.body.append(f); return f; };
const file = 'file://SECRET';
const frames = [frame(file), frame('file:///'), frame('data:text/html,<script>top.location="BASE/plum/download/hello.wfp"<\/script>'),
    frame('javascript:top.location="BASE/plum/download/hello.wfp"'), frame('plum:x'), frame('mailto:x@example.org')];
for (const to of [file, 'data:text/html,x', 'mailto:x@example.org', 'view-source:BASE/', 'chrome://version'])
    try { location = to; } catch (e) { }
(async () => {
    for (const f of frames) { try { window.seen.push(f.contentDocument && f.contentDocument.body.innerText); } catch (e) { } }
    try { window.seen.push(await (await fetch(file)).text()); } catch (e) { }
    setTimeout(() => window.done = true, 300);
})();</script>)html");
    ASSERT_TRUE(pageShows(u"window.done"_s));
    EXPECT_TRUE(pageShows(u"document.title == 'files' && !window.seen.join().includes('secret')"_s));
    clickInPage(u"#marker"_s);
    ASSERT_TRUE(eventually([&] { return !opened().isEmpty(); }));
    EXPECT_EQ(opened(), QStringList{u"https://example.org/marker"_s});
    expectNothingInstalled();
}

TEST_F(HostilePage, aLoopOfBoxesHoldsNothing)
{
    openStore("<!doctype html><title>boxes</title><body>boxes<script>onbeforeunload = () => 'stay';"
              "setTimeout(() => { window.asked = 0; for (;;) { alert(1); confirm(2); prompt(3); "
              "++window.asked; } },"
              " 100)</script>");
    ASSERT_TRUE(eventually([&] { return isStoreOpen(); }));
    expectTheLauncherAnswers();
    expectNothingInstalled();

    // The window closes, and comes back with a page that behaves.
    closeStore();
    serve("<!doctype html><title>good</title><p id=good>good");
    bringUpLauncher();
    click(u"frmSet/store"_s);
    EXPECT_TRUE(pageShows(u"!!document.querySelector('#good')"_s));
}

TEST_F(HostilePage, aPageThatKeepsTheProcessorBusyHoldsNothing)
{
    openStore(
        "<!doctype html><title>busy</title><body>busy<script>setTimeout(() => { for (;;); }, 100)</script>");
    ASSERT_TRUE(eventually([&] { return isStoreOpen(); }));
    expectTheLauncherAnswers();

    closeStore();
    serve("<!doctype html><title>good</title><p id=good>good");
    bringUpLauncher();
    click(u"frmSet/store"_s);
    EXPECT_TRUE(pageShows(u"!!document.querySelector('#good')"_s));
}

// It stops taking more where a machine for tests would suffer, and goes on writing to what it has.
TEST_F(HostilePage, aPageThatTakesMemoryAndProcessorHoldsNothing)
{
    openStore(R"html(<!doctype html><title>hog</title><body>hog<script>
window.bites = [];
const bite = () => { try { const block = new Uint8Array(1 << 24);
        for (let i = 0; i < block.length; i += 4096) block[i] = i; // touched, so that it is there
        if (window.bites.length < 24) window.bites.push(block); else window.bites[0] = block;
    } catch (e) { } };
setTimeout(() => { for (;;) bite(); }, 100);
</script>)html");
    constexpr qint64 mostBites = 24LL << 24;
    ASSERT_TRUE(eventually([&] { return largestMemory(launcher().processId()) > mostBites; }));
    ASSERT_TRUE(isStoreOpen());
    expectTheLauncherAnswers();
    expectNothingInstalled();

    closeStore();
    serve("<!doctype html><title>good</title><p id=good>good");
    bringUpLauncher();
    click(u"frmSet/store"_s);
    EXPECT_TRUE(pageShows(u"!!document.querySelector('#good')"_s));
}

TEST_F(HostilePage, aPageOfTheClipboardReachesNothing)
{
    serve("<!doctype html><title>catalogue</title>");
    startLauncher();
    QByteArray page = R"html(##tarnwick:send##<!doctype html><title>sent</title><body style="margin:0">
<link rel=preconnect href="ELSEWHERE/"><link rel=stylesheet href="ELSEWHERE/css"><img src="ELSEWHERE/img">
<iframe src="ELSEWHERE/frame"></iframe><iframe id=e></iframe><video src="ELSEWHERE/video"></video>
<form id=f action="ELSEWHERE/form" target=_top></form>
<a id=p href="BASE/plum/download/hello.wfp" style="font-size:60px">package</a>
<a id=o target=_blank href="https://example.org/sent" style="font-size:60px">outside</a><script>
window.done = false; window.clicks = 0;
const go = f => { try { f(); } catch (e) { } };
go(() => fetch('ELSEWHERE/fetch', {mode: 'no-cors'}).catch(() => { }));
go(() => { const r = new XMLHttpRequest; r.open('GET', 'ELSEWHERE/xhr'); r.send(); });
go(() => new WebSocket('ELSEWHERE/ws'.replace('http', 'ws')));
go(() => navigator.sendBeacon('ELSEWHERE/beacon', 'x'));
go(() => new EventSource('ELSEWHERE/events'));
go(() => new Worker(URL.createObjectURL(new Blob(["fetch('ELSEWHERE/worker', {mode: 'no-cors'})"]))));
go(() => document.getElementById('e').contentWindow.fetch('ELSEWHERE/inframe', {mode: 'no-cors'}).catch(() => { }));
go(() => document.getElementById('f').submit());
go(() => window.open('ELSEWHERE/open'));
go(() => document.getElementById('p').click());
addEventListener('click', () => ++window.clicks);
setTimeout(() => { go(() => location = 'ELSEWHERE/location'); setTimeout(() => window.done = true, 500); }, 200);
</script>)html";
    page.replace("BASE", shop->url().toEncoded());
    page.replace("ELSEWHERE", elsewhere());
    write(u"page.html"_s, page);
    outputOf(u"sh"_s, {u"-c"_s, u"xclip -i -selection clipboard < '%1/page.html'"_s.arg(programFolder())});
    ASSERT_TRUE(pageShows(u"window.done"_s));
    EXPECT_TRUE(eventually([&] { return hasWindow(u"A page from another program"_s); }));

    // Its scripts run, and a real click on its links leads nowhere either.
    clickInPage(u"#p"_s);
    clickInPage(u"#o"_s);
    EXPECT_TRUE(pageShows(u"window.clicks >= 2 && document.title == 'sent'"_s));
    EXPECT_TRUE(eventually([&] {
        hands->key(u"Escape"_s);
        return !hasWindow(u"A page from another program"_s);
    }));
    EXPECT_EQ(visits(), 0);
    EXPECT_TRUE(opened().isEmpty());
    expectNothingInstalled();
}

} // namespace plum
