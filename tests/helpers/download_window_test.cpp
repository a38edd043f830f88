#include "helpers/download/download_window.h"
#include "look/theme.h"
#include "look/translations.h"
#include "platform/linux/file_paths.h"
#include "support/temporary_files.h"
#include "support/test_server.h"
#include "support/wait_until.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTranslator>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::DownloadRequest;
using plum::DownloadWindow;
using plum::test::Nginx;
using plum::test::TemporaryFiles;
using plum::test::waitUntil;

TEST(DownloadRequest, TakesTheFourFields)
{
    const auto request = DownloadRequest::fromCommandLine(u"http://h/a.zip@@@C:\\in\\@@@b.zip@@@My label"_s);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->url, u"http://h/a.zip"_s);
    EXPECT_EQ(request->target, u"C:\\in\\b.zip"_s);
    EXPECT_EQ(request->label, u"My label"_s);
}

TEST(DownloadRequest, AnEmptyLabelIsTheFileName)
{
    EXPECT_EQ(DownloadRequest::fromCommandLine(u"http://h/a@@@/in@@@b.zip@@@"_s)->label, u"b.zip"_s);
    EXPECT_EQ(DownloadRequest::fromCommandLine(u"http://h/a@@@/in@@@b.zip"_s)->target, u"\\in\\b.zip"_s);
}

TEST(DownloadRequest, NeedsAnAddress)
{
    EXPECT_FALSE(DownloadRequest::fromCommandLine(QString()));
    EXPECT_FALSE(DownloadRequest::fromCommandLine(u"@@@/in@@@a@@@"_s));
}

TEST(DownloadRequest, AnAddressGivesTheNameThatIsMissing)
{
    for (const auto &[url, name] : std::initializer_list<std::pair<QString, QString>>{
             {u"http://h/a/b.zip"_s, u"b.zip"_s}, {u"http://h/a/b/"_s, u"b"_s},
             {u"http://shop.test/"_s, u"shop.test"_s}, {u"shop.test"_s, u"shop.test"_s},
             {u"http://h/a%20%E4%BD%A0?q=/x/#y/"_s, u"a 你"_s}, {u"http://h/a%2Fb%3A%22"_s, u"b__"_s},
             {u"http://h/a/../.."_s, u"download"_s}, {u"http://"_s, u"download"_s}})
        EXPECT_EQ(plum::fileNameFor(url), name) << url.toStdString();
    const auto request = DownloadRequest::fromCommandLine(u"http://h/a/@@@/in@@@@@@"_s);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->target, u"\\in\\a"_s);
    EXPECT_EQ(request->label, u"a"_s);
    EXPECT_TRUE(request->staysInFolder(plum::FilePaths(u"/plum/plum"_s)));
}

TEST(DownloadRequest, ANameThatLeavesTheFolderIsSeen)
{
    const plum::FilePaths paths(u"/plum/plum"_s);
    for (const QString &name :
        {u"../x"_s, u"..\\x"_s, u"../../../x"_s, u"a/../../x"_s, u"/etc/x"_s, u".."_s, u"C:\\x"_s, u"a/"_s})
        EXPECT_FALSE(DownloadRequest::fromCommandLine(u"http://h/a@@@/in@@@"_s + name)->staysInFolder(paths))
            << name.toStdString();
    for (const QString &name : {u"x"_s, u"a/x"_s, u"..x"_s, u"x.."_s})
        EXPECT_TRUE(DownloadRequest::fromCommandLine(u"http://h/a@@@/in@@@"_s + name)->staysInFolder(paths))
            << name.toStdString();
}

namespace {

class DownloadWindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(nginx.start(u"location /slow/ { alias %1/; limit_rate 300k; }"_s.arg(served.folder())));
        for (int i = 0; i < 2'000'000; ++i)
            content += static_cast<char>(i * 31 % 251);
        served.write(u"file.bin"_s, content);
    }

    std::unique_ptr<DownloadWindow> open(const QString &url)
    {
        auto window = std::make_unique<DownloadWindow>(
            DownloadRequest{url, target.folder() + u"\\sub\\file.bin"_s, u"My label"_s}, paths);
        window->show();
        window->start();
        return window;
    }

    static QString text(const DownloadWindow &window, const QString &name)
    {
        return window.findChild<QLabel *>(name)->text();
    }

    Nginx nginx;
    TemporaryFiles served;
    TemporaryFiles target;
    plum::FilePaths paths{u"/plum/plum"_s};
    QByteArray content;
};

} // namespace

TEST_F(DownloadWindowTest, LooksLikeTheOtherWindows)
{
    const auto window = open(nginx.address(u"file.bin"_s));
    const plum::Theme theme = plum::Theme::of(QApplication::palette());
    const QImage shown = window->grab().toImage();
    EXPECT_EQ(shown.pixelColor(2, 2).rgb(), theme.window.rgb());
    const auto *end = window->findChild<QPushButton *>(u"end"_s);
    const QPoint middle(end->width() / 2, end->height() - 4); // below the caption
    EXPECT_EQ(shown.pixelColor(end->mapTo(window.get(), middle)).rgb(), theme.hover.rgb());
}

TEST_F(DownloadWindowTest, GrowsWithATextOfSeveralLines)
{
    DownloadWindow window(DownloadRequest{.url = nginx.address(u"file.bin"_s),
                              .target = u"\\x"_s,
                              .label = u"My label"_s,
                              .name = u"..\\x"_s},
        paths);
    window.setMinimumWidth(1);
    window.resize(200, 1);
    window.show();
    window.start();
    QApplication::processEvents();
    const auto *state = window.findChild<QLabel *>(u"state"_s);
    EXPECT_GT(state->heightForWidth(state->width()), 2 * state->fontMetrics().height());
    EXPECT_GE(state->height(), state->heightForWidth(state->width()));
    const auto *end = window.findChild<QPushButton *>(u"end"_s);
    EXPECT_GE(end->height(), end->sizeHint().height());
}

TEST_F(DownloadWindowTest, ShowsHowFarItIsAndCompletes)
{
    const auto window = open(nginx.address(u"slow/file.bin"_s));
    EXPECT_EQ(window->windowTitle(), u"My label"_s);
    EXPECT_EQ(text(*window, u"label"_s), u"My label"_s);
    auto *bar = window->findChild<QProgressBar *>(u"bar"_s);
    ASSERT_TRUE(waitUntil([&] { return bar->value() > 0 && bar->value() < 100; }));
    EXPECT_TRUE(text(*window, u"figures"_s).contains(u"1.90 MB"_s))
        << text(*window, u"figures"_s).toStdString();
    ASSERT_TRUE(waitUntil([&] { return text(*window, u"figures"_s).endsWith(u"/s"_s); }));
    ASSERT_TRUE(waitUntil([&] { return window->isComplete(); }));
    EXPECT_EQ(bar->value(), 100);
    EXPECT_EQ(text(*window, u"state"_s), u"Complete."_s);
    EXPECT_EQ(window->findChild<QPushButton *>(u"end"_s)->text(), u"Close"_s);
    EXPECT_EQ(target.read(u"sub/file.bin"_s), content);
}

TEST_F(DownloadWindowTest, SpeaksTheLanguageOfTheSession)
{
    const QList<QTranslator *> before = qApp->findChildren<QTranslator *>();
    plum::installTranslation(*qApp, QLocale(QLocale::Chinese, QLocale::China));
    const auto window = open(nginx.address(u"none.bin"_s));
    EXPECT_EQ(window->findChild<QPushButton *>(u"again"_s)->text(), u"重试"_s);
    EXPECT_TRUE(waitUntil([&] { return text(*window, u"state"_s) == u"服务器上没有此文件。"_s; }))
        << text(*window, u"state"_s).toStdString();
    EXPECT_EQ(window->findChild<QPushButton *>(u"end"_s)->text(), u"关闭"_s);
    for (QTranslator *each : qApp->findChildren<QTranslator *>()) {
        if (!before.contains(each))
            delete each;
    }
}

TEST_F(DownloadWindowTest, NeverOverwritesAFile)
{
    target.write(u"sub/file.bin"_s, "mine");
    const auto window = open(nginx.address(u"slow/file.bin"_s));
    ASSERT_TRUE(waitUntil([&] { return window->isComplete(); }));
    EXPECT_EQ(target.read(u"sub/file.bin"_s), "mine");
    EXPECT_EQ(target.read(u"sub/file(1).bin"_s), content);
}

TEST_F(DownloadWindowTest, CancelKeepsWhatHasArrivedAndAgainGoesOn)
{
    const auto window = open(nginx.address(u"slow/file.bin"_s));
    auto *again = window->findChild<QPushButton *>(u"again"_s);
    EXPECT_FALSE(again->isVisible());
    ASSERT_TRUE(waitUntil([&] { return !target.read(u"sub/file.bin.dl"_s).isEmpty(); }));
    window->findChild<QPushButton *>(u"end"_s)->click();
    EXPECT_EQ(text(*window, u"state"_s), u"Paused."_s);
    EXPECT_TRUE(content.startsWith(target.read(u"sub/file.bin.dl"_s)));
    ASSERT_TRUE(again->isVisible());
    again->click();
    ASSERT_TRUE(waitUntil([&] { return window->isComplete(); }));
    EXPECT_EQ(target.read(u"sub/file.bin"_s), content);
}

TEST_F(DownloadWindowTest, SaysWhatIsWrong)
{
    const auto missing = open(nginx.address(u"slow/none.bin"_s));
    ASSERT_TRUE(
        waitUntil([&] { return text(*missing, u"state"_s) == u"The server does not have this file."_s; }));
    EXPECT_FALSE(QFileInfo::exists(target.folder() + u"/sub/file.bin"_s));
    const auto refused = open(u"http://127.0.0.1:%1/f"_s.arg(plum::test::freePort()));
    ASSERT_TRUE(waitUntil([&] { return text(*refused, u"state"_s) == u"The server cannot be reached."_s; }));
    const auto safe = open(u"https://127.0.0.1:%1/f"_s.arg(plum::test::freePort()));
    ASSERT_TRUE(waitUntil([&] { return text(*safe, u"state"_s) == u"The server cannot be reached."_s; }));
    target.write(u"sub/file.bin.dl/folder"_s, "x");
    const auto blocked = open(nginx.address(u"slow/file.bin"_s));
    ASSERT_TRUE(waitUntil([&] { return blocked->isComplete(); }));
    EXPECT_EQ(target.read(u"sub/file.bin"_s), content);
}

TEST_F(DownloadWindowTest, FetchesNothingForANameThatLeavesTheFolder)
{
    const auto request = DownloadRequest::fromCommandLine(
        nginx.address(u"slow/file.bin"_s) + u"@@@"_s + target.folder() + u"/sub@@@../../x@@@"_s);
    DownloadWindow window(*request, paths);
    window.show();
    window.start();
    EXPECT_EQ(text(window, u"state"_s), u"The file name leads out of the folder. Nothing was downloaded."_s);
    EXPECT_FALSE(QFileInfo::exists(target.folder() + u"/sub"_s));
}
