#include "support/temporary_files.h"
#include "support/test_server.h"
#include "support/wait_until.h"
#include "support/x_server.h"

#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;
using plum::test::Nginx;
using plum::test::patience;
using plum::test::TemporaryFiles;
using plum::test::waitUntil;

namespace {

const QString programs = QStringLiteral(PLUM_PROGRAMS_FOLDER);
const QString downloadProgram = programs + u"/config/module/download/download.exe"_s;
const QString browserProgram = programs + u"/config/module/net/browser/browser.exe"_s;

// The number of pixels of one colour on the whole screen, and the titles of its windows.
class ScreenReader
{
public:
    explicit ScreenReader(const QString &display)
        : m_connection(xcb_connect(display.toLatin1().constData(), nullptr), &xcb_disconnect)
        , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data)
    {
    }

    int pixelsOf(quint32 colour) const
    {
        const auto reply = answer(xcb_get_image_reply(m_connection.get(),
            xcb_get_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root, 0, 0,
                m_screen->width_in_pixels, m_screen->height_in_pixels, ~0U),
            nullptr));
        if (!reply)
            return 0;
        const auto *pixels = reinterpret_cast<const quint32 *>(xcb_get_image_data(reply.get()));
        const auto count = static_cast<size_t>(xcb_get_image_data_length(reply.get())) / 4;
        return static_cast<int>(
            std::count_if(pixels, pixels + count, [colour](quint32 p) { return (p & 0xFFFFFF) == colour; }));
    }

    QStringList titles() const { return titlesBelow(m_screen->root); }

private:
    template <typename Reply> static std::unique_ptr<Reply, decltype(&std::free)> answer(Reply *reply)
    {
        return {reply, &std::free};
    }

    QStringList titlesBelow(xcb_window_t window) const
    {
        QStringList found;
        const auto title = answer(xcb_get_property_reply(m_connection.get(),
            xcb_get_property(
                m_connection.get(), 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 1000),
            nullptr));
        if (title && xcb_get_property_value_length(title.get()) > 0) {
            found += QString::fromUtf8(static_cast<const char *>(xcb_get_property_value(title.get())),
                xcb_get_property_value_length(title.get()));
        }
        const auto tree = answer(
            xcb_query_tree_reply(m_connection.get(), xcb_query_tree(m_connection.get(), window), nullptr));
        for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i)
            found += titlesBelow(xcb_query_tree_children(tree.get())[i]);
        return found;
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_screen_t *m_screen;
};

// A page that is one colour all over.
QString colouredPage(const QString &colour)
{
    return u"<html><head><title>own title</title></head><body style=\"background:#%1\"></body></html>"_s.arg(
        colour);
}

constexpr int manyPixels = 200'000;

class HelperPrograms : public testing::Test
{
protected:
    HelperPrograms()
    {
        // The programs' settings and caches go with the test.
        qputenv("HOME", home.folder().toUtf8());
    }

    ~HelperPrograms() override
    {
        helper.terminate();
        if (!helper.waitForFinished(patience))
            helper.kill();
    }

    void start(const QString &program, const QString &commandLine)
    {
        helper.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        server.start(helper, program, {commandLine});
        ASSERT_TRUE(helper.waitForStarted(patience));
    }

    TemporaryFiles home;
    plum::XServer server;
    QProcess helper;
};

} // namespace

TEST_F(HelperPrograms, ADownloadThatWasKilledResumes)
{
    Nginx nginx;
    TemporaryFiles served;
    TemporaryFiles target;
    ASSERT_TRUE(server.isReady());
    ASSERT_TRUE(nginx.start(u"location /slow/ { alias %1/; limit_rate 300k; }"_s.arg(served.folder())));
    const QByteArray content = QByteArray("0123456789abcdef").repeated(60'000);
    served.write(u"file.bin"_s, content);
    const QString commandLine
        = QStringList{nginx.address(u"slow/file.bin"_s), target.folder(), u"file.bin"_s, u"The label"_s}.join(
            u"@@@"_s);

    start(downloadProgram, commandLine);
    ASSERT_TRUE(waitUntil([&] { return target.read(u"file.bin.dl"_s).size() > 100'000; }));
    const ScreenReader screen(server.display());
    EXPECT_TRUE(waitUntil([&] { return screen.titles().contains(u"The label"_s); }));
    helper.kill();
    ASSERT_TRUE(helper.waitForFinished(patience));
    const qsizetype arrived = target.read(u"file.bin.dl"_s).size();
    ASSERT_LT(arrived, content.size());

    start(downloadProgram, commandLine);
    ASSERT_TRUE(waitUntil([&] { return target.read(u"file.bin"_s).size() == content.size(); }));
    EXPECT_EQ(target.read(u"file.bin"_s), content);
    ASSERT_TRUE(waitUntil([&] { return nginx.log().count("\n") == 2; }));
    EXPECT_TRUE(nginx.log().contains("206 " + QByteArray::number(content.size() - arrived) + ' '))
        << nginx.log().toStdString();
    helper.terminate();
    ASSERT_TRUE(helper.waitForFinished(patience));
    EXPECT_EQ(helper.exitCode(), 0);
}

TEST_F(HelperPrograms, DownloadWithoutFieldsSaysHowToUseIt)
{
    start(downloadProgram, u"nonsense"_s);
    ASSERT_TRUE(helper.waitForFinished(patience));
    EXPECT_EQ(helper.exitCode(), 1);
}

TEST_F(HelperPrograms, TheBrowserShowsAnAddressUnderItsTitle)
{
    if (!QFile::exists(browserProgram))
        GTEST_SKIP() << "built without Qt WebEngine";
    Nginx nginx;
    ASSERT_TRUE(server.isReady() && nginx.start());
    QFile page(nginx.folder() + u"/page.html"_s);
    ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    page.write(colouredPage(u"1266cc"_s).toUtf8());
    page.close();
    start(browserProgram, u"_tarnwick_url_|||"_s + nginx.address(u"page.html"_s) + u"|||The title"_s);
    const ScreenReader screen(server.display());
    ASSERT_TRUE(waitUntil([&] { return screen.pixelsOf(0x1266cc) > manyPixels; }));
    EXPECT_TRUE(waitUntil([&] { return screen.titles().contains(u"The title"_s); }));
    helper.terminate();
    ASSERT_TRUE(helper.waitForFinished(patience));
    EXPECT_EQ(helper.exitCode(), 0);
}

TEST_F(HelperPrograms, TheBrowserShowsHtmlOfWebboxAndOfPrint)
{
    if (!QFile::exists(browserProgram))
        GTEST_SKIP() << "built without Qt WebEngine";
    ASSERT_TRUE(server.isReady());
    const ScreenReader screen(server.display());
    for (const QString &marker : {u"_tarnwick_html_|||"_s, QString()}) {
        start(browserProgram, marker + colouredPage(u"cc6612"_s) + u"|||"_s);
        ASSERT_TRUE(waitUntil([&] { return screen.pixelsOf(0xcc6612) > manyPixels; }));
        EXPECT_TRUE(waitUntil([&] { return screen.titles().contains(u"own title"_s); }));
        helper.terminate();
        ASSERT_TRUE(helper.waitForFinished(patience));
    }
}

TEST_F(HelperPrograms, APageOfTheBrowserCannotReadFiles)
{
    if (!QFile::exists(browserProgram))
        GTEST_SKIP() << "built without Qt WebEngine";
    ASSERT_TRUE(server.isReady());
    const QString secret = home.write(u"secret.txt"_s, "secret");
    start(browserProgram,
        u"_tarnwick_html_|||<body><script>var r = new XMLHttpRequest(); function show(c) "
        "{ document.body.style.background = c; } try { r.open('GET', 'file://%1', false); r.send(); "
        "show(r.responseText == 'secret' ? '#cc0000' : '#00cc11'); } catch (e) { show('#00cc11'); }"
        "</script></body>|||"_s.arg(secret));
    const ScreenReader screen(server.display());
    ASSERT_TRUE(
        waitUntil([&] { return screen.pixelsOf(0x00cc11) + screen.pixelsOf(0xcc0000) > manyPixels; }));
    EXPECT_EQ(screen.pixelsOf(0xcc0000), 0);
}
