#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/x11_screen.h"
#include "support/x_server.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace plum {

namespace {

// A server of its own with one bare window of known pixels on a black root.
class ScreenTest : public testing::TestWithParam<bool>
{
protected:
    static constexpr QRect window{30, 20, 8, 6};

    void SetUp() override
    {
        ASSERT_TRUE(server.isReady());
        server.useAsDisplay();
        connection = std::make_unique<X11Connection>();
        ASSERT_TRUE(connection->isOpen());
        screen = std::make_unique<X11Screen>(*connection);
        if (!GetParam())
            screen->giveUpSharedMemory();
        paintWindow();
    }

    void paintWindow()
    {
        xcb_connection_t *xcb = connection->xcb();
        const xcb_window_t id = xcb_generate_id(xcb);
        const std::array<quint32, 2> values{0x112233, 1}; // the background; not managed by anyone
        xcb_create_window(xcb, XCB_COPY_FROM_PARENT, id, connection->root(), window.x(), window.y(),
            window.width(), window.height(), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
            XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
        xcb_map_window(xcb, id);
        const xcb_gcontext_t red = xcb_generate_id(xcb);
        const quint32 colour = 0xff0000;
        xcb_create_gc(xcb, red, id, XCB_GC_FOREGROUND, &colour);
        const xcb_rectangle_t corner{7, 5, 1, 1};
        xcb_poly_fill_rectangle(xcb, id, red, 1, &corner);
        connection->sync();
    }

    static quint32 pixel(const Capture &capture, int x, int y)
    {
        return capture.pixels[static_cast<size_t>(y * capture.size.width() + x)] & 0xffffff;
    }

    XServer server{{320, 200}};
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11Screen> screen;
};

} // namespace

TEST_P(ScreenTest, KnowsItsSizes)
{
    EXPECT_EQ(screen->mainScreenSize(), QSize(320, 200));
    EXPECT_EQ(screen->desktop(), QRect(0, 0, 320, 200));
}

TEST_P(ScreenTest, CopiesTheVisiblePixels)
{
    const Capture all = screen->capture(screen->desktop());
    ASSERT_EQ(all.size, QSize(320, 200));
    ASSERT_EQ(all.pixels.size(), 320u * 200u);
    EXPECT_EQ(screen->usesSharedMemory(), GetParam());
    EXPECT_EQ(pixel(all, 30, 20), 0x112233u);
    EXPECT_EQ(pixel(all, 37, 25), 0xff0000u);
    EXPECT_EQ(pixel(all, 38, 25), 0u);
    EXPECT_EQ(pixel(all, 29, 20), 0u);
}

TEST_P(ScreenTest, RegionBeginsAtItsCorner)
{
    const Capture part = screen->capture({36, 24, 3, 3});
    ASSERT_EQ(part.pixels.size(), 9u);
    EXPECT_EQ(pixel(part, 0, 0), 0x112233u);
    EXPECT_EQ(pixel(part, 1, 1), 0xff0000u);
    EXPECT_EQ(pixel(part, 2, 2), 0u);
}

TEST_P(ScreenTest, OffTheDesktopIsBlack)
{
    const Capture before = screen->capture({-5, -5, 36, 26});
    ASSERT_EQ(before.size, QSize(36, 26));
    EXPECT_EQ(pixel(before, 35, 25), 0x112233u);
    EXPECT_EQ(pixel(before, 34, 25), 0u);
    const Capture behind = screen->capture({310, 190, 20, 20});
    EXPECT_EQ(behind.pixels.size(), 400u);
    const Capture outside = screen->capture({1000, 1000, 10, 10});
    ASSERT_EQ(outside.pixels.size(), 100u);
    EXPECT_TRUE(std::ranges::all_of(outside.pixels, [](quint32 value) { return (value & 0xffffff) == 0; }));
}

TEST_P(ScreenTest, RefusesEmptyAndEnormousRegions)
{
    EXPECT_TRUE(screen->capture({0, 0, 0, 10}).isEmpty());
    EXPECT_TRUE(screen->capture({0, 0, -3, 10}).isEmpty());
    EXPECT_TRUE(screen->capture({0, 0, 1 << 14, (1 << 14) + 1}).isEmpty());
}

TEST_P(ScreenTest, GrowsAndGoesOnAfterASmallCapture)
{
    EXPECT_EQ(screen->capture({0, 0, 4, 4}).pixels.size(), 16u);
    EXPECT_EQ(pixel(screen->capture(screen->desktop()), 37, 25), 0xff0000u);
    EXPECT_EQ(pixel(screen->capture({37, 25, 1, 1}), 0, 0), 0xff0000u);
}

TEST_P(ScreenTest, KeepsNoSharedMemoryBehind)
{
    screen->capture(screen->desktop());
    screen.reset();
    connection->sync();
    // Segments of this process would be marked with its number as the creator's.
    std::ifstream segments("/proc/sysvipc/shm");
    std::string line;
    std::getline(segments, line);
    long key = 0;
    long id = 0;
    long mode = 0;
    long size = 0;
    long creator = 0;
    while (segments >> key >> id >> mode >> size >> creator) {
        EXPECT_NE(creator, QCoreApplication::applicationPid()) << size;
        std::getline(segments, line);
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, ScreenTest, testing::Bool(),
    [](const auto &way) { return std::string(way.param ? "SharedMemory" : "Socket"); });

namespace {

// A server whose desktop is divided into monitors, as xrandr divides it.
class MonitorsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(server.isReady());
        server.useAsDisplay();
    }

    // The monitor is made active by the server's one output or, with "none", by none.
    void setMonitor(const QString &name, const QString &geometry, const QString &output)
    {
        QProcess xrandr;
        server.start(
            xrandr, QStringLiteral("xrandr"), {QStringLiteral("--setmonitor"), name, geometry, output});
        ASSERT_TRUE(xrandr.waitForFinished());
        ASSERT_EQ(xrandr.exitCode(), 0) << xrandr.readAllStandardError().toStdString();
    }

    static QSize mainScreenSize()
    {
        X11Connection connection;
        return X11Screen(connection).mainScreenSize();
    }

    XServer server{{500, 200}};
};

} // namespace

TEST_F(MonitorsTest, ThePrimaryOneIsTheMainScreen)
{
    setMonitor(QStringLiteral("left"), QStringLiteral("200/50x200/50+0+0"), QStringLiteral("screen"));
    setMonitor(QStringLiteral("*right"), QStringLiteral("300/80x150/40+200+0"), QStringLiteral("none"));
    EXPECT_EQ(mainScreenSize(), QSize(300, 150));
}

TEST_F(MonitorsTest, WithoutAPrimaryOneItIsTheOneAtTheCorner)
{
    setMonitor(QStringLiteral("right"), QStringLiteral("300/80x200/50+200+0"), QStringLiteral("screen"));
    setMonitor(QStringLiteral("left"), QStringLiteral("200/50x150/40+0+0"), QStringLiteral("none"));
    EXPECT_EQ(mainScreenSize(), QSize(200, 150));
}

TEST_F(MonitorsTest, WithoutOneAtTheCornerItIsTheFirst)
{
    setMonitor(QStringLiteral("right"), QStringLiteral("300/80x150/40+200+50"), QStringLiteral("screen"));
    setMonitor(QStringLiteral("left"), QStringLiteral("200/50x150/40+0+50"), QStringLiteral("none"));
    EXPECT_EQ(mainScreenSize(), QSize(300, 150));
}

TEST(ScreenWithoutAServer, IsEmpty)
{
    qputenv("DISPLAY", ":no-such-display");
    X11Connection connection;
    X11Screen screen(connection);
    EXPECT_TRUE(screen.mainScreenSize().isEmpty());
    EXPECT_TRUE(screen.desktop().isEmpty());
    EXPECT_TRUE(screen.capture({0, 0, 10, 10}).isEmpty());
}

} // namespace plum
