#include "contract/contract_test.h"

#include "platform/screen.h"

#include <algorithm>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

class ScreenPort : public ContractTest
{
protected:
    Screen &screen() { return platform->screen(); }

    static quint32 pixel(const Capture &capture, int x, int y)
    {
        return capture.pixels[static_cast<size_t>(y * capture.size.width() + x)] & 0xffffff;
    }

    static bool isBlack(quint32 value) { return (value & 0xffffff) == 0; }
};

} // namespace

TEST_F(ScreenPort, mainScreenIsPartOfTheDesktop)
{
    EXPECT_FALSE(screen().mainScreenSize().isEmpty());
    EXPECT_TRUE(screen().desktop().contains(QRect(QPoint(), screen().mainScreenSize())));
}

TEST_F(ScreenPort, copiesEveryPixelOfAWindow)
{
    const auto window = openWindow(u"Painted"_s, {210, 130, 173, 141});
    ASSERT_TRUE(window);
    const QRect inside = window->inside();
    const Capture capture = screen().capture(inside);
    ASSERT_EQ(capture.size, inside.size());
    ASSERT_EQ(
        capture.pixels.size(), static_cast<size_t>(inside.width()) * static_cast<size_t>(inside.height()));
    int wrong = 0;
    for (int y = 0; y < inside.height(); ++y) {
        for (int x = 0; x < inside.width(); ++x) {
            const bool isFirst = x < PeerWindow::cornerSize && y < PeerWindow::cornerSize;
            const bool isLast = x >= inside.width() - PeerWindow::cornerSize
                && y >= inside.height() - PeerWindow::cornerSize;
            wrong += pixel(capture, x, y)
                != (isFirst      ? PeerWindow::topLeftCorner
                        : isLast ? PeerWindow::bottomRightCorner
                                 : PeerWindow::background);
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(ScreenPort, aRegionBeginsAtItsCorner)
{
    const auto window = openWindow();
    ASSERT_TRUE(window);
    const QPoint last = window->inside().topLeft() + QPoint(1, 1) * (PeerWindow::cornerSize - 1);
    const Capture capture = screen().capture({last, QSize(2, 2)});
    ASSERT_EQ(capture.pixels.size(), 4u);
    EXPECT_EQ(pixel(capture, 0, 0), PeerWindow::topLeftCorner);
    EXPECT_EQ(pixel(capture, 1, 0), PeerWindow::background);
    EXPECT_EQ(pixel(capture, 0, 1), PeerWindow::background);
    EXPECT_EQ(pixel(capture, 1, 1), PeerWindow::background);
}

TEST_F(ScreenPort, whatLiesOffTheDesktopIsBlack)
{
    const auto window = openWindow();
    ASSERT_TRUE(window);
    platform->windows().moveTo(window->handle(), {-100, 100});
    const QRect all = screen().desktop();
    const int row = platform->windows().rectangle(window->handle()).center().y();
    ASSERT_TRUE(waitUntil([&] {
        return pixel(screen().capture({all.left(), row, 1, 1}), 0, 0) == PeerWindow::background;
    }));

    const Capture edge = screen().capture({all.left() - 5, row, 8, 1});
    ASSERT_EQ(edge.size, QSize(8, 1));
    EXPECT_TRUE(std::ranges::all_of(edge.pixels.first(5), isBlack));
    EXPECT_EQ(pixel(edge, 5, 0), PeerWindow::background);
    const Capture corner = screen().capture({all.right() - 9, all.bottom() - 9, 20, 20});
    ASSERT_EQ(corner.pixels.size(), 400u);
    EXPECT_TRUE(isBlack(pixel(corner, 10, 9)));
    EXPECT_TRUE(isBlack(pixel(corner, 9, 10)));
    EXPECT_TRUE(isBlack(pixel(corner, 19, 19)));
    const Capture outside = screen().capture({all.right() + 5000, all.top(), 10, 10});
    ASSERT_EQ(outside.pixels.size(), 100u);
    EXPECT_TRUE(std::ranges::all_of(outside.pixels, isBlack));
}

TEST_F(ScreenPort, refusesEmptyAndEnormousRegions)
{
    EXPECT_TRUE(screen().capture({0, 0, 0, 10}).isEmpty());
    EXPECT_TRUE(screen().capture({0, 0, 10, 0}).isEmpty());
    EXPECT_TRUE(screen().capture({0, 0, -3, 10}).isEmpty());
    EXPECT_TRUE(screen().capture({0, 0, 1 << 14, (1 << 14) + 1}).isEmpty());
}

TEST_F(ScreenPort, goesOnAfterASmallCapture)
{
    const auto window = openWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(screen().capture({0, 0, 4, 4}).pixels.size(), 16u);
    const QRect all = screen().desktop();
    const Capture capture = screen().capture(all);
    ASSERT_EQ(capture.size, all.size());
    const QPoint corner = window->inside().topLeft() - all.topLeft();
    EXPECT_EQ(pixel(capture, corner.x(), corner.y()), PeerWindow::topLeftCorner);
    EXPECT_EQ(
        pixel(screen().capture({window->inside().topLeft(), QSize(1, 1)}), 0, 0), PeerWindow::topLeftCorner);
}

} // namespace plum::contract
