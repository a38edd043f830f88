#include "platform/recording/recording_platform.h"
#include "search/find_color_scan.h"
#include "search/find_pic_scan.h"
#include "search/pixel_kernels.h"
#include "search/reference_search.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

// How many random cases each of the tests here tries. PLUM_SEARCH_CASES asks for more, or for fewer.
int caseCount()
{
    bool ok = false;
    const int wanted = qEnvironmentVariableIntValue("PLUM_SEARCH_CASES", &ok);
    return ok ? wanted : 20000;
}

class Dice
{
public:
    explicit Dice(unsigned seed)
        : m_engine(seed)
    {
    }

    int between(int low, int high) { return std::uniform_int_distribution(low, high)(m_engine); }
    bool oneIn(int n) { return between(1, n) == 1; }
    template <typename T> T of(std::initializer_list<T> choices)
    {
        return choices.begin()[between(0, static_cast<int>(choices.size()) - 1)];
    }

private:
    std::mt19937 m_engine;
};

quint32 colour(int r, int g, int b)
{
    return static_cast<quint32>(r << 16 | g << 8 | b);
}

// Ways to paint: each makes another part of the rules decide.
enum class Paint {
    Flat,
    Noise,
    FewColours, // of the values next to the bounds of a tolerance
    Stripes,
    Sparse, // flat with a few pixels that differ
    Gradient,
    RedAlone, // channels that differ from the flat colour in one channel only
};

Picture paint(Dice &dice, Paint how, int width, int height)
{
    Picture picture{width, height, {}};
    const int extremes = dice.between(0, 3);
    const auto value = [&] {
        if (extremes == 0)
            return dice.between(0, 255);
        return dice.of({0, 1, 33, 34, 87, 88, 89, 167, 168, 220, 221, 222, 254, 255});
    };
    const std::array<quint32, 3> colours{colour(value(), value(), value()), colour(value(), value(), value()),
        dice.oneIn(2) ? 0u : colour(value(), value(), value())};
    const int period = dice.between(1, 5);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            quint32 pixel = colours[0];
            switch (how) {
            case Paint::Flat:
                break;
            case Paint::Noise:
                pixel = colour(dice.between(0, 255), dice.between(0, 255), dice.between(0, 255));
                break;
            case Paint::FewColours:
                pixel = colours[static_cast<std::size_t>(dice.between(0, 2))];
                break;
            case Paint::Stripes:
                pixel = colours[static_cast<std::size_t>((column + row * (period % 2)) / period % 2)];
                break;
            case Paint::Sparse:
                pixel = dice.oneIn(20) ? colours[1] : colours[0];
                break;
            case Paint::Gradient:
                pixel = colour(std::min(255, column * 4), std::min(255, row * 4), 128);
                break;
            case Paint::RedAlone:
                pixel = dice.oneIn(6) ? (colours[0] ^ 0xff0000) : colours[0];
                break;
            }
            picture.pixels.push_back(pixel);
        }
    }
    return picture;
}

Paint anyPaint(Dice &dice)
{
    return static_cast<Paint>(dice.between(0, 6));
}

void frame(Picture &picture, int border, quint32 pixel)
{
    for (int row = 0; row < picture.height; ++row) {
        for (int column = 0; column < picture.width; ++column) {
            if (row < border || column < border || row >= picture.height - border
                || column >= picture.width - border)
                picture.pixels[static_cast<std::size_t>(row * picture.width + column)] = pixel;
        }
    }
}

Picture cut(const Picture &from, int x, int y, int width, int height)
{
    Picture part{width, height, {}};
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column)
            part.pixels.push_back(from.at(x + column, y + row));
    }
    return part;
}

void put(Picture &onto, const Picture &what, int x, int y)
{
    for (int row = 0; row < what.height; ++row) {
        for (int column = 0; column < what.width; ++column)
            onto.pixels[static_cast<std::size_t>((y + row) * onto.width + x + column)] = what.at(column, row);
    }
}

// The region's pixels with black where it leaves the screen.
Picture regionOf(const Picture &screen, const QRect &region)
{
    Picture picture{std::max(region.width(), 0), std::max(region.height(), 0), {}};
    for (int row = 0; row < picture.height; ++row) {
        for (int column = 0; column < picture.width; ++column) {
            const int x = region.x() + column;
            const int y = region.y() + row;
            const bool inside = x >= 0 && y >= 0 && x < screen.width && y < screen.height;
            picture.pixels.push_back(inside ? screen.at(x, y) : 0);
        }
    }
    return picture;
}

Channels anyTolerance(Dice &dice)
{
    if (!dice.oneIn(4))
        return {88, 221, 255};
    const auto any = [&] { return static_cast<quint8>(dice.of({0, 1, 30, 127, 128, 254, 255})); };
    return {any(), any(), any()};
}

struct Case
{
    Picture screen;
    QRect region;
    Picture picture;
    Channels tolerance;
};

Case anyCase(Dice &dice)
{
    Case made;
    made.tolerance = anyTolerance(dice);
    made.screen = paint(dice, anyPaint(dice), dice.between(1, 140), dice.between(1, 24));
    made.region = QRect(0, 0, made.screen.width, made.screen.height);
    if (dice.oneIn(3)) {
        made.region = QRect(
            dice.between(-30, 60), dice.between(-30, 20), dice.between(-1, 150), dice.between(-1, 50));
    }
    const Picture region = regionOf(made.screen, made.region);
    const int shape = dice.between(0, 9);
    if (shape <= 3 && region.width > 3 && region.height > 3) {
        // Cut out of what is there: a hit, often in the last column or row that the bounds allow.
        const int width = dice.between(1, std::min(region.width, dice.of({3, 8, 40, 150})));
        const int height = dice.between(1, std::min(region.height, dice.of({3, 8, 40})));
        const int x = dice.of({0, region.width - width, dice.between(0, region.width - width)});
        const int y = dice.of({0, region.height - height, dice.between(0, region.height - height)});
        made.picture = cut(region, x, y, width, height);
        if (dice.oneIn(3)) // one pixel off
            made.picture.pixels[static_cast<std::size_t>(dice.between(0, width * height - 1))] ^= 0xff0000;
    } else {
        const int width = shape == 4 ? std::max(region.width, 1) : dice.between(1, 20);
        const int height = shape == 4 ? std::max(region.height, 1) : dice.between(1, 12);
        made.picture = paint(dice, anyPaint(dice), width, height);
    }
    if (dice.oneIn(2))
        frame(made.picture, dice.between(1, 3),
            dice.of({0u, 0xffffffu, 0xff00ffu, 0x00ff00u, 0x102000u, made.picture.pixels.front()}));
    if (dice.oneIn(3) && made.picture.width <= made.screen.width && made.picture.height <= made.screen.height)
        put(made.screen, made.picture, dice.between(0, made.screen.width - made.picture.width),
            dice.between(0, made.screen.height - made.picture.height));
    return made;
}

QString toText(const std::optional<Position> &found)
{
    return found ? u"%1,%2"_s.arg(found->x).arg(found->y) : QString();
}

class FastSearch : public testing::TestWithParam<const PixelKernels *>
{
protected:
    QString findPicture(const Case &with)
    {
        const auto region = capture(with);
        return toText(m_scan.find(*region, PictureTemplate(with.picture, with.tolerance)));
    }

    QString findColour(const Case &with, quint32 wanted)
    {
        return toText(plum::findColour(*capture(with), wanted, *GetParam()));
    }

private:
    std::optional<ScreenRegion> capture(const Case &with)
    {
        m_screen.size = QSize(with.screen.width, with.screen.height);
        m_screen.pixels = with.screen.pixels;
        // The fourth byte of a pixel has no meaning; a search that reads it is caught here.
        for (quint32 &pixel : m_screen.pixels)
            pixel |= 0xab000000;
        return captureRegion(
            m_screen, with.region.x(), with.region.y(), with.region.width(), with.region.height());
    }

    recording::RecordingScreen m_screen;
    FindPicScan m_scan{*GetParam()};
};

std::string describe(const Case &with, int number)
{
    return u"case %1: screen %2x%3 region %4:%5:%6:%7 picture %8x%9"_s.arg(number)
        .arg(with.screen.width)
        .arg(with.screen.height)
        .arg(with.region.x())
        .arg(with.region.y())
        .arg(with.region.width())
        .arg(with.region.height())
        .arg(with.picture.width)
        .arg(with.picture.height)
        .toStdString();
}

} // namespace

TEST_P(FastSearch, FindsPicturesWhereTheRulesDo)
{
    Dice dice(1);
    int hits = 0;
    for (int number = 0; number < caseCount(); ++number) {
        const Case with = anyCase(dice);
        const QString expected
            = reference::FindPic(regionOf(with.screen, with.region), with.picture, with.tolerance);
        ASSERT_EQ(findPicture(with), expected) << describe(with, number);
        hits += expected.isEmpty() || expected == "0,0"_L1 ? 0 : 1;
    }
    // The cases are worth something only when both answers are common.
    EXPECT_GT(hits, caseCount() / 20);
    EXPECT_LT(hits, caseCount() * 19 / 20);
}

// Screens on which nearly everything matches, large enough that what the scan remembers of earlier failures
// fills up, is forgotten and is used again; the hit, if any, is far down.
TEST_P(FastSearch, FindsPicturesOnLargeScreensThatNearlyMatch)
{
    Dice dice(4);
    int hits = 0;
    constexpr int cases = 60;
    for (int number = 0; number < cases; ++number) {
        Case with;
        const int width = dice.between(200, 900);
        const int height = dice.between(60, 160);
        with.screen = paint(dice, Paint::Flat, width, height);
        const int distance = dice.of({5, 17, 60, 400});
        for (quint32 &pixel : with.screen.pixels)
            pixel = dice.oneIn(distance) ? pixel ^ 0xff0000 : pixel;
        const int side = dice.of({6, 16, 40});
        if (dice.oneIn(2))
            with.picture = cut(with.screen, width - side - 2, height - side - 2, side, side);
        else
            with.picture = paint(dice, Paint::RedAlone, side, side);
        with.picture.pixels[static_cast<std::size_t>(side - 1)]
            ^= 0xffffff; // keeps it whole, is not compared
        with.region = QRect(0, 0, width, height);
        with.tolerance = {88, 221, 255};
        const QString expected = reference::FindPic(with.screen, with.picture, with.tolerance);
        ASSERT_EQ(findPicture(with), expected) << describe(with, number);
        hits += expected.isEmpty() ? 0 : 1;
    }
    EXPECT_GT(hits, cases / 10);
    EXPECT_LT(hits, cases * 9 / 10);
}

TEST_P(FastSearch, FindsColoursWhereTheRulesDo)
{
    Dice dice(2);
    int hits = 0;
    for (int number = 0; number < caseCount(); ++number) {
        const Case with = anyCase(dice);
        const Picture region = regionOf(with.screen, with.region);
        const quint32 wanted = dice.oneIn(3) || region.pixels.empty()
            ? dice.of({0u, 0xffffffu, 0x123456u})
            : region.pixels[static_cast<std::size_t>(
                dice.between(0, static_cast<int>(region.pixels.size()) - 1))];
        const QString expected = reference::FindColor(region,
            {static_cast<quint8>(wanted >> 16), static_cast<quint8>(wanted >> 8),
                static_cast<quint8>(wanted)});
        ASSERT_EQ(findColour(with, wanted), expected) << describe(with, number);
        hits += expected.isEmpty() ? 0 : 1;
    }
    EXPECT_GT(hits, caseCount() / 4);
}

INSTANTIATE_TEST_SUITE_P(Kernels, FastSearch,
    testing::ValuesIn(usablePixelKernels().begin(), usablePixelKernels().end()),
    [](const auto &kernels) { return std::string(kernels.param->name); });
