#include "drift.h"

#include "scenes.h"
#include "search/find_pic_scan.h"
#include "search/pixel_kernels.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <span>
#include <vector>

namespace plum {

namespace {

constexpr std::size_t searches = 10'000;
constexpr std::size_t compared = 1'000;

double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double median(std::span<const double> values)
{
    std::vector<double> sorted(values.begin(), values.end());
    std::ranges::sort(sorted);
    return sorted[sorted.size() / 2];
}

} // namespace

void printDrift(Screen &screen, const QRect &region, const Picture &picture)
{
    FindPicScan scan(pixelKernels());
    std::vector<double> times;
    times.reserve(searches);
    std::size_t found = 0;
    for (std::size_t i = 0; i < searches; ++i) {
        const double start = processorTime();
        const Capture capture = screen.capture(region);
        const ScreenRegion seen{region.width(), region.height(), {0, 0}, capture};
        found += scan.find(seen, PictureTemplate(picture, scenes::tolerance)).has_value();
        times.push_back(processorTime() - start);
    }
    const double first = median(std::span(times).first(compared));
    const double last = median(std::span(times).last(compared));
    std::printf("\n%zu captures and searches of %dx%d in a row, %zu found; median of the first %zu: %.3f ms, "
                "of the last %zu: %.3f ms (%.2fx)\n",
        searches, region.width(), region.height(), found, compared, first, compared, last, last / first);
}

} // namespace plum
