// The memory of the process over many searches.

#include "platform/recording/recording_platform.h"
#include "search/find_color_scan.h"
#include "search/find_pic_scan.h"
#include "search/pixel_kernels.h"
#include "search/screen_region.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

std::vector<quint32> noise(std::mt19937 &random, int pixels, quint32 mask)
{
    std::vector<quint32> painted(static_cast<std::size_t>(pixels));
    std::ranges::generate(painted, [&] { return static_cast<quint32>(random()) & mask; });
    return painted;
}

int residentPages()
{
    QFile file(u"/proc/self/statm"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toInt() : 0;
}

} // namespace

TEST(ScreenSearchMemory, StaysTheSameOverTenThousandSearches)
{
    std::mt19937 random(3);
    recording::RecordingScreen screen;
    screen.size = QSize(160, 90);
    screen.pixels = noise(random, 160 * 90, 0x404040);
    const PictureTemplate absent({12, 9, noise(random, 12 * 9, 0xffffff)}, {88, 221, 255});
    FindPicScan scan(pixelKernels());
    const auto search = [&](int times) {
        for (int i = 0; i < times; ++i) {
            const auto region = captureRegion(screen, i % 7 - 3, 0, 160, 90);
            scan.find(*region, absent);
            findColour(*region, 0x010203, pixelKernels());
        }
    };
    search(500);
    const int before = residentPages();
    ASSERT_GT(before, 0);
    search(10000);
    EXPECT_LE(residentPages() - before, 64);
}
