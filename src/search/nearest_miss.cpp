#include "search/nearest_miss.h"

#include "platform/stop_signal.h"
#include "search/pixel_kernels.h"
#include "search/searched_area.h"

#include <algorithm>

namespace plum {

namespace {

// Far from each other in any order of the pixels, so that a sample sees all of the picture.
constexpr std::size_t sampleSteps = 40503;
constexpr std::size_t firstSamples = 8;
constexpr std::size_t allSamples = 48;

class Comparison
{
public:
    Comparison(const ScreenRegion &region, const PictureTemplate &picture)
        : m_picture(picture)
        , m_width(static_cast<std::size_t>(picture.comparedWidth()))
        , m_height(static_cast<std::size_t>(picture.comparedHeight()))
        , m_isPossible(m_area.setUp(region, picture))
    {
        const std::size_t pixels = m_width * m_height;
        for (std::size_t n = 0; n < std::min(allSamples, pixels); ++n)
            m_samples.push_back(pixels <= allSamples ? n : n * sampleSteps % pixels);
    }

    std::optional<NearestMiss> nearest(const StopSignal *stop)
    {
        if (!m_isPossible)
            return {};
        m_fewest = m_width * m_height / 2 + 1;
        for (std::size_t row = 0; row < m_area.positionsDown(); ++row) {
            if (stop && stop->isRaised())
                return {};
            m_area.makeRows(row + m_height, m_picture, pixelKernels());
            for (std::size_t column = 0; column < m_area.positionsAcross(); ++column)
                tryAt(column, row);
        }
        return m_isFound ? std::optional(describe()) : std::nullopt;
    }

private:
    bool passes(int channel, std::size_t pixel, std::size_t column, std::size_t row) const
    {
        const auto &bounds = m_picture.bounds(channel);
        if (bounds.isEmpty())
            return true;
        const std::size_t boxRow = pixel / m_width;
        const std::size_t boxColumn = pixel % m_width;
        const std::size_t at = boxRow * m_picture.stride() + boxColumn;
        const quint8 value = m_area.row(channel, row + boxRow)[column + boxColumn];
        return static_cast<quint8>(value - bounds.low[at]) <= bounds.span[at];
    }

    bool passes(std::size_t pixel, std::size_t column, std::size_t row) const
    {
        return passes(0, pixel, column, row) && passes(1, pixel, column, row)
            && passes(2, pixel, column, row);
    }

    bool isLike(std::size_t column, std::size_t row) const
    {
        std::size_t differing = 0;
        for (std::size_t n = 0; n < m_samples.size(); ++n) {
            if (!passes(m_samples[n], column, row))
                ++differing;
            const std::size_t most = n < firstSamples ? firstSamples * 5 / 8 : m_samples.size() / 2;
            if (differing > most)
                return false;
        }
        return true;
    }

    void tryAt(std::size_t column, std::size_t row)
    {
        if (!isLike(column, row))
            return;
        std::size_t differing = 0;
        for (std::size_t pixel = 0; pixel < m_width * m_height && differing < m_fewest; ++pixel)
            differing += passes(pixel, column, row) ? 0 : 1;
        if (differing >= m_fewest)
            return;
        m_fewest = differing;
        m_column = column;
        m_row = row;
        m_isFound = true;
    }

    NearestMiss describe()
    {
        NearestMiss miss{.at = m_area.inRegion(m_column, m_row),
            .compared = static_cast<int>(m_width * m_height),
            .differing = static_cast<int>(m_fewest)};
        for (std::size_t pixel = 0; pixel < m_width * m_height; ++pixel) {
            if (passes(pixel, m_column, m_row))
                continue;
            for (int channel = 0; channel < channelCount; ++channel)
                miss.byChannel[static_cast<std::size_t>(channel)]
                    += passes(channel, pixel, m_column, m_row) ? 0 : 1;
            if (miss.first.size() < NearestMiss::mostNamed)
                miss.first.push_back({m_picture.left() + static_cast<int>(pixel % m_width),
                    m_picture.top() + static_cast<int>(pixel / m_width)});
        }
        return miss;
    }

    const PictureTemplate &m_picture;
    std::size_t m_width;
    std::size_t m_height;
    SearchedArea m_area;
    bool m_isPossible;
    std::vector<std::size_t> m_samples;
    std::size_t m_fewest = 0;
    std::size_t m_column = 0;
    std::size_t m_row = 0;
    bool m_isFound = false;
};

} // namespace

std::optional<NearestMiss> findNearestMiss(
    const ScreenRegion &region, const PictureTemplate &picture, const StopSignal *stop)
{
    if (region.isEmpty() || picture.comparedWidth() <= 0 || picture.comparedHeight() <= 0)
        return {};
    return Comparison(region, picture).nearest(stop);
}

} // namespace plum
