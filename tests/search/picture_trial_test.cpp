#include "search/picture_trial.h"

#include "commands/screen_fields.h"
#include "support/dice.h"

#include <gtest/gtest.h>

#include <vector>

namespace plum {

namespace {

// A screen of noise, in which a picture of its own can be put anywhere.
class PictureTrialTest : public testing::Test
{
protected:
    PictureTrialTest()
    {
        recording::Dice dice(7);
        for (quint32 &pixel : pixels)
            pixel = noise(dice);
        for (quint32 &pixel : picture.pixels)
            pixel = noise(dice);
    }

    static quint32 noise(recording::Dice &dice) { return static_cast<quint32>(dice.below(2)) * 0xffffff; }

    void put(int x, int y)
    {
        for (int row = 0; row < picture.height; ++row) {
            for (int column = 0; column < picture.width; ++column)
                at(x + column, y + row) = picture.at(column, row);
        }
    }

    quint32 &at(int x, int y) { return pixels[static_cast<std::size_t>(y * width + x)]; }

    PictureTrial trial()
    {
        return tryPicture(picture, pictureTolerance, {width, height, {}, {{width, height}, pixels}});
    }

    static constexpr int width = 160;
    static constexpr int height = 120;
    std::vector<quint32> pixels = std::vector<quint32>(std::size_t(width * height));
    Picture picture{12, 10, std::vector<quint32>(std::size_t(12 * 10))};
};

} // namespace

TEST_F(PictureTrialTest, everyPlaceIsCountedOnce)
{
    EXPECT_EQ(trial().found, 0);
    EXPECT_FALSE(trial().first);
    put(100, 30);
    put(20, 70);
    put(20, 90);
    const PictureTrial seen = trial();
    EXPECT_EQ(seen.found, 3);
    ASSERT_TRUE(seen.first);
    EXPECT_EQ(seen.first->y, 30 + seen.compared.y());
    EXPECT_EQ(seen.first->x, 100 + seen.compared.x());
}

TEST_F(PictureTrialTest, theNearestOtherPlaceIsNotOneWhereItIsFound)
{
    put(100, 30);
    // By chance a place of the noise is alike by a little more than half.
    if (const PictureTrial seen = trial(); seen.nearest) {
        EXPECT_GT(seen.nearest->differing, seen.nearest->compared / 4);
    }
    put(20, 70);
    at(25, 75) ^= 0xffffff;
    const PictureTrial seen = trial();
    EXPECT_EQ(seen.found, 1);
    ASSERT_TRUE(seen.nearest);
    EXPECT_EQ(seen.nearest->differing, 1);
    EXPECT_EQ(seen.nearest->at.x, 20 + seen.compared.x());
    EXPECT_EQ(seen.nearest->at.y, 70 + seen.compared.y());
}

TEST_F(PictureTrialTest, ofOneColourNothingIsLeft)
{
    std::ranges::fill(picture.pixels, 0x336699U);
    EXPECT_TRUE(trial().compared.isEmpty());
    EXPECT_EQ(trial().found, 0);
}

// Blue does not count: where nothing else differs every place passes.
TEST_F(PictureTrialTest, pixelsThatEveryColourPassesDecideNothing)
{
    EXPECT_GT(trial().comparedPixels, 0);
    EXPECT_LE(trial().comparedPixels, trial().compared.width() * trial().compared.height());
}

TEST_F(PictureTrialTest, aScreenFullOfThemIsNotCountedToItsEnd)
{
    picture = {4, 4, std::vector<quint32>(16)};
    for (int pixel = 0; pixel < 16; ++pixel)
        picture.pixels[std::size_t(pixel)] = (pixel / 4 + pixel % 4) % 2 ? 0xffffffU : 0U;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            at(x, y) = (x + y) % 2 ? 0xffffffU : 0U;
    }
    EXPECT_EQ(trial().found, PictureTrial::mostFound);
    EXPECT_FALSE(trial().nearest);
}

} // namespace plum
