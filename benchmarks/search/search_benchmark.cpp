// Measures the screen searches on the desktop that DISPLAY names, beside the plain reference and beside
// OpenCV's template matching on one core.
#include "drift.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/x11_screen.h"
#include "ratio_table.h"
#include "scenes.h"
#include "search/find_color_scan.h"
#include "search/find_pic_scan.h"
#include "search/pixel_kernels.h"
#include "search/reference_search.h"

#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cstdio>
#include <cstring>
#include <deque>

using namespace plum;
using scenes::Scene;

namespace {

// What the plain reference may cost: channel comparisons for one search.
constexpr double referenceLimit = 2e10;

ScreenRegion regionOf(const Picture &screen)
{
    return {screen.width, screen.height, {0, 0}, {QSize(screen.width, screen.height), screen.pixels}};
}

std::optional<Position> findOnce(const Picture &screen, const Picture &picture)
{
    static FindPicScan scan(pixelKernels()); // its memory would be part of the time otherwise
    return scan.find(regionOf(screen), PictureTemplate(picture, scenes::tolerance));
}

void measureOwn(benchmark::State &state, const Scene &scene)
{
    FindPicScan scan(pixelKernels());
    const ScreenRegion region = regionOf(scene.screen);
    const PictureTemplate picture(scene.picture, scenes::tolerance);
    for (auto _ : state)
        benchmark::DoNotOptimize(scan.find(region, picture));
}

void measureReference(benchmark::State &state, const Scene &scene)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(reference::FindPic(scene.screen, scene.picture, scenes::tolerance));
}

cv::Mat asMat(const Picture &picture)
{
    cv::Mat colour(picture.height, picture.width, CV_8UC4, const_cast<quint32 *>(picture.pixels.data()));
    cv::Mat grey;
    cv::cvtColor(colour, grey, cv::COLOR_BGRA2GRAY);
    return grey;
}

// The cheapest that the library offers: one channel, squared differences. The conversion to one channel is
// not counted.
void measureMatchTemplate(benchmark::State &state, const Scene &scene)
{
    const cv::Mat screen = asMat(scene.screen);
    const cv::Mat picture = asMat(scene.picture);
    cv::Mat result;
    for (auto _ : state) {
        cv::matchTemplate(screen, picture, result, cv::TM_SQDIFF);
        double best = 0;
        cv::Point at;
        cv::minMaxLoc(result, &best, nullptr, &at);
        benchmark::DoNotOptimize(at);
    }
}

struct Case
{
    std::string name;
    Scene scene;
    double referenceCost; // channel comparisons, roughly
};

void registerCase(const Case &measured, bool hasPeer)
{
    const auto add = [&](const char *engine, auto routine, bool once) {
        benchmark::internal::Benchmark *added
            = benchmark::RegisterBenchmark((measured.name + '/' + engine).c_str(),
                [&measured, routine](benchmark::State &state) { routine(state, measured.scene); });
        added->Unit(benchmark::kMillisecond);
        if (once)
            added->Iterations(1);
    };
    add("Plum", measureOwn, false);
    if (measured.referenceCost <= referenceLimit)
        add("reference", measureReference, measured.referenceCost > 1e9);
    if (hasPeer)
        add("matchTemplate", measureMatchTemplate, false);
}

std::string sizeText(QSize size)
{
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

void addCases(std::deque<Case> &cases, const Picture &screen)
{
    const QSize screenSize(screen.width, screen.height);
    const double pixels = double(screen.width) * screen.height;
    for (const QSize size : {QSize(16, 16), QSize(64, 64), QSize(300, 200)}) {
        const std::string name = sizeText(screenSize) + ", " + sizeText(size) + ", ";
        const double area = double(size.width()) * size.height();
        const auto add
            = [&](const char *what, std::optional<Scene> scene, double referenceCost, bool hasPeer) {
                  if (!scene) {
                      std::fprintf(stderr, "%s%s: this desktop has no such picture\n", name.c_str(), what);
                      return;
                  }
                  cases.push_back({name + what, std::move(*scene), referenceCost});
                  registerCase(cases.back(), hasPeer);
              };
        add("found near the end", scenes::foundNearTheEnd(screen, size, findOnce), pixels * 20, true);
        add("not found", scenes::notFound(screen, size, findOnce), pixels * 20, true);
        add("hostile: one wrong pixel", scenes::oneWrongPixel(screenSize, size), pixels * area, false);
        add("hostile: spoilt screen", scenes::spoiltScreen(screenSize, size), pixels * area / 8, false);
        add("hostile: broken stripes", scenes::brokenStripes(screenSize, size), pixels * area / 8, false);
    }
}

void registerColour(const Picture &screen)
{
    const std::string name = sizeText({screen.width, screen.height}) + ", colour not found/";
    benchmark::RegisterBenchmark((name + "Plum").c_str(), [&screen](benchmark::State &state) {
        const ScreenRegion region = regionOf(screen);
        for (auto _ : state)
            benchmark::DoNotOptimize(findColour(region, 0x010203, pixelKernels()));
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "reference").c_str(), [&screen](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(reference::FindColor(screen, {1, 2, 3}));
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "memchr").c_str(), [&screen](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(std::memchr(screen.pixels.data(), 1, screen.pixels.size() * 4));
    })->Unit(benchmark::kMillisecond);
}

void registerCapture(Screen &screen, QSize size)
{
    benchmark::RegisterBenchmark((sizeText(size) + ", capture/Plum").c_str(),
        [&screen, size](benchmark::State &state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(screen.capture({QPoint(), size}));
        })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark((sizeText(size) + ", capture/memcpy").c_str(),
        [size](benchmark::State &state) {
            const std::size_t count
                = static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height());
            const std::vector<quint32> from(count, 1);
            std::vector<quint32> to(count, 0);
            for (auto _ : state) {
                std::memcpy(to.data(), from.data(), count * 4);
                benchmark::ClobberMemory();
            }
        })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

Picture captured(Screen &screen, const QRect &region)
{
    const Capture capture = screen.capture(region);
    Picture picture{capture.size.width(), capture.size.height(), {}};
    for (const quint32 pixel : capture.pixels)
        picture.pixels.push_back(pixel & 0xffffff);
    return picture;
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    X11Connection connection;
    X11Screen screen(connection);
    const QRect desktop = screen.desktop();
    if (desktop.isEmpty()) {
        std::fprintf(stderr, "There is no display to look at.\n");
        return 1;
    }
    cv::setNumThreads(1);

    QRect middle(0, 0, 1920, 1080);
    middle.moveCenter(desktop.center());
    const Picture large = captured(screen, desktop);
    const Picture small = captured(screen, middle);
    const Picture flat{
        desktop.width(), desktop.height(), std::vector<quint32>(large.pixels.size(), 0x808080)};
    std::deque<Case> cases;
    addCases(cases, small);
    addCases(cases, large);
    registerColour(flat);
    registerCapture(screen, desktop.size());
    RatioTable table({"Plum", "reference", "matchTemplate", "memchr", "memcpy"});
    benchmark::RunSpecifiedBenchmarks(&table);
    if (const auto scene = scenes::notFound(small, {64, 64}, findOnce))
        printDrift(screen, middle, scene->picture);
    return 0;
}
