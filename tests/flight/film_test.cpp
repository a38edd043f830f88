#include "flight/film.h"

#include "flight/flight_camera.h"
#include "platform/recording/recording_platform.h"
#include "search/screen_region.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace plum;

namespace {

std::vector<quint32> noise(int count, quint32 seed)
{
    std::vector<quint32> pixels;
    for (int index = 0; index < count; ++index)
        pixels.push_back((seed * 7919 + quint32(index) + 1) * 2654435761U);
    return pixels;
}

ScreenTile tileOf(const std::vector<quint32> &pixels, QSize size = ScreenTile::size)
{
    return ScreenTile(Capture{size, pixels});
}

const int tilePixels = ScreenTile::size.width() * ScreenTile::size.height();

} // namespace

TEST(ScreenTile, KeepsEveryPixel)
{
    std::vector<quint32> pixels = noise(tilePixels, 1);
    std::fill(pixels.begin() + 100, pixels.begin() + 5000, 0xff123456);
    const QImage image = tileOf(pixels).toImage();
    ASSERT_EQ(image.size(), ScreenTile::size);
    for (int index = 0; index < tilePixels; ++index) {
        ASSERT_EQ(image.pixel(index % image.width(), index / image.width()) & 0xffffff,
            pixels[std::size_t(index)] & 0xffffff)
            << index;
    }
}

TEST(ScreenTile, OfOneColourIsSmall)
{
    EXPECT_LT(tileOf(std::vector<quint32>(std::size_t(tilePixels), 0x808080)).bytes(), 1000);
}

TEST(ScreenTile, BringsARegionDownInItsOwnProportions)
{
    const QSize screen(3840, 2160);
    std::vector<quint32> pixels(std::size_t(screen.width()) * std::size_t(screen.height()), 0x0000ff);
    for (int y = 0; y < screen.height(); ++y)
        std::fill_n(pixels.begin() + qint64(y) * screen.width(), screen.width() / 2, 0x00ff00);
    const ScreenRegion region{screen.width(), screen.height(), {}, {screen, pixels}};
    const QImage image = ScreenTile(region).toImage();
    EXPECT_EQ(image.size(), QSize(240, 135));
    EXPECT_EQ(image.pixel(119, 60) & 0xffffff, 0x00ff00U);
    EXPECT_EQ(image.pixel(120, 60) & 0xffffff, 0x0000ffU);
}

TEST(ScreenTile, IsBlackWhereARegionLeavesTheDesktop)
{
    const std::vector<quint32> pixels(100, 0xffffff);
    const QImage image = ScreenTile(ScreenRegion{20, 10, {10, 0}, {{10, 10}, pixels}}).toImage();
    EXPECT_EQ(image.pixel(9, 5) & 0xffffff, 0U);
    EXPECT_EQ(image.pixel(10, 5) & 0xffffff, 0xffffffU);
    EXPECT_TRUE(ScreenTile(ScreenRegion()).isEmpty());
}

TEST(Film, KeepsTheNewestPicturesInBoundedMemory)
{
    Film film;
    const Film::Id first = film.add(tileOf(noise(tilePixels, 0)));
    Film::Id last = first;
    for (quint32 seed = 1; seed < 400; ++seed) {
        last = film.add(tileOf(noise(tilePixels, seed)));
        ASSERT_LE(film.bytes(), Film::mostBytes);
    }
    EXPECT_EQ(film.find(first), nullptr);
    ASSERT_NE(film.find(last), nullptr);
    EXPECT_EQ(*film.find(last), tileOf(noise(tilePixels, 399)));
    EXPECT_GT(film.bytes(), Film::mostBytes / 2);
    film.clear();
    EXPECT_EQ(film.find(last), nullptr);
    EXPECT_EQ(film.bytes(), 0);
}

TEST(Film, HoldsAPictureThatDoesNotChangeOnce)
{
    Film film;
    const Film::Id first = film.add(tileOf(noise(tilePixels, 1)));
    const qsizetype bytes = film.bytes();
    EXPECT_EQ(film.add(tileOf(noise(tilePixels, 1))), first);
    EXPECT_EQ(film.bytes(), bytes);
    const Film::Id second = film.add(tileOf(noise(tilePixels, 2)));
    EXPECT_NE(second, first);
    EXPECT_EQ(film.replace(second, tileOf(noise(tilePixels, 3))), second);
    EXPECT_EQ(*film.find(second), tileOf(noise(tilePixels, 3)));
    EXPECT_EQ(*film.find(first), tileOf(noise(tilePixels, 1)));
    EXPECT_EQ(film.find(0), nullptr);
    EXPECT_EQ(film.find(second + 1), nullptr);
}

TEST(FlightCamera, TakesASmallPartOfARunsTime)
{
    recording::RecordingPlatform desktop;
    desktop.screen().size = {400, 300};
    desktop.screen().pixels = noise(400 * 300, 5);
    qint64 now = 0;
    FlightCamera camera(desktop, [&now] { return now += 1'000'000; });
    camera.begin();
    int taken = 0;
    while (camera.aroundPointer(0))
        ++taken;
    EXPECT_EQ(taken, 6) << "a short run has some, too";
    EXPECT_FALSE(camera.aroundPointer(29'000).has_value());
    EXPECT_TRUE(camera.aroundPointer(30'000).has_value());
    camera.begin();
    EXPECT_TRUE(camera.aroundPointer(0).has_value());
}
