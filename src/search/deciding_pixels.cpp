#include "search/deciding_pixels.h"

#include <algorithm>
#include <bitset>

namespace plum {

namespace {

constexpr std::size_t sampledPixels = 2048; // for the frequency of each channel value
constexpr std::size_t sampledPositions = 256; // for what a test turns away
constexpr std::size_t cells = 8; // candidates come from a grid of so many cells in each direction
constexpr std::size_t maxTests = 20;
constexpr std::size_t coverings = 3; // how often the sample is turned away completely

using Sample = std::bitset<sampledPositions>;

struct Candidate
{
    PixelTest test;
    Sample fails;
};

// A sequence without pattern, the same in every run.
class Scatter
{
public:
    std::size_t below(std::size_t end)
    {
        m_state = m_state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::size_t>(((m_state >> 32) * end) >> 32);
    }

private:
    quint64 m_state = 20240229;
};

// For each channel, how many of the sampled pixels lie below each value.
using Frequencies = std::array<std::array<quint16, 257>, channelCount>;

Frequencies sampleFrequencies(const SearchedArea &area, const PictureTemplate &picture, Scatter &scatter)
{
    Frequencies below{};
    const std::size_t columns
        = area.positionsAcross() + static_cast<std::size_t>(picture.comparedWidth()) - 1;
    const std::size_t rows = area.positionsDown() + static_cast<std::size_t>(picture.comparedHeight()) - 1;
    for (std::size_t i = 0; i < sampledPixels; ++i) {
        const std::size_t row = scatter.below(rows);
        const quint32 pixel = area.pixel(scatter.below(columns), row);
        for (std::size_t channel = 0; channel < channelCount; ++channel)
            ++below[channel][(pixel >> channelShifts[channel] & 0xff) + 1];
    }
    for (auto &channel : below) {
        for (std::size_t value = 1; value < channel.size(); ++value)
            channel[value] = static_cast<quint16>(channel[value] + channel[value - 1]);
    }
    return below;
}

// One candidate of a cell of the grid: the pixel that turns away most of the sampled pixels on one side.
struct CellBest
{
    int away = 0;
    std::size_t at = 0; // index into the picture's bounds

    void offer(int otherAway, std::size_t otherAt)
    {
        if (otherAway > away)
            *this = {otherAway, otherAt};
    }
};

// From each cell the pixel that turns away most of what is darker, and the one for what is brighter: on a
// bright screen it is a picture's few dark pixels that decide, however rarely they do elsewhere.
std::vector<Candidate> candidatesOf(
    const PictureTemplate &picture, int channel, const std::array<quint16, 257> &below)
{
    const auto &bounds = picture.bounds(channel);
    if (bounds.isEmpty())
        return {};
    const std::size_t width = static_cast<std::size_t>(picture.comparedWidth());
    const std::size_t height = static_cast<std::size_t>(picture.comparedHeight());
    std::array<CellBest, cells * cells> darker;
    std::array<CellBest, cells * cells> brighter;
    for (std::size_t row = 0; row < height; ++row) {
        const std::size_t cellRow = row * cells / height * cells;
        for (std::size_t cell = 0; cell < cells; ++cell) {
            const std::size_t end = (cell + 1) * width / cells;
            for (std::size_t column = cell * width / cells; column < end; ++column) {
                const std::size_t at = row * picture.stride() + column;
                const std::size_t low = bounds.low[at];
                darker[cellRow + cell].offer(below[low], at);
                brighter[cellRow + cell].offer(below[256] - below[low + bounds.span[at] + 1], at);
            }
        }
    }
    std::vector<Candidate> candidates;
    for (const auto &side : {darker, brighter}) {
        for (const CellBest &best : side) {
            if (best.away > 0)
                candidates.push_back({testAt(picture, channel, best.at), {}});
        }
    }
    return candidates;
}

void findFailures(std::vector<Candidate> &candidates, const SearchedArea &area, Scatter &scatter)
{
    for (std::size_t i = 0; i < sampledPositions; ++i) {
        // One position of each of as many bands of rows, so that no part of the screen is left out.
        const std::size_t from = i * area.positionsDown() / sampledPositions;
        const std::size_t end = std::max((i + 1) * area.positionsDown() / sampledPositions, from + 1);
        const std::size_t row = from + scatter.below(end - from);
        const std::size_t column = scatter.below(area.positionsAcross());
        for (Candidate &candidate : candidates) {
            const PixelTest &test = candidate.test;
            const quint32 pixel = area.pixel(column + test.column, row + test.row);
            const unsigned shift = channelShifts[static_cast<std::size_t>(test.channel)];
            candidate.fails[i] = !test.passes(static_cast<quint8>(pixel >> shift));
        }
    }
}

} // namespace

PixelTest testAt(const PictureTemplate &picture, int channel, std::size_t at)
{
    const auto &bounds = picture.bounds(channel);
    return {channel, at % picture.stride(), at / picture.stride(), bounds.low[at], bounds.span[at]};
}

std::vector<PixelTest> decidingPixels(const SearchedArea &area, const PictureTemplate &picture)
{
    Scatter scatter;
    const Frequencies below = sampleFrequencies(area, picture, scatter);
    std::vector<Candidate> candidates;
    for (int channel = 0; channel < channelCount; ++channel) {
        const std::vector<Candidate> more
            = candidatesOf(picture, channel, below[static_cast<std::size_t>(channel)]);
        candidates.insert(candidates.end(), more.begin(), more.end());
    }
    findFailures(candidates, area, scatter);

    // Each next test is the one that turns away most of what the tests before it let through.
    std::vector<PixelTest> tests;
    for (std::size_t covering = 0; covering < coverings; ++covering) {
        Sample left = Sample().set();
        while (left.any() && tests.size() < maxTests) {
            const auto turnsAway
                = [&](const Candidate &candidate) { return (candidate.fails & left).count(); };
            const auto best = std::ranges::max_element(candidates, {}, turnsAway);
            if (best == candidates.end() || turnsAway(*best) == 0)
                break;
            left &= ~best->fails;
            tests.push_back(best->test);
            candidates.erase(best);
        }
    }
    return tests;
}

} // namespace plum
