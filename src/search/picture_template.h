#pragma once

#include "search/colour_text.h"
#include "search/picture_file.h"

#include <array>
#include <vector>

namespace plum {

// The channels in the order of their place in a pixel.
inline constexpr int channelCount = 3;
inline constexpr std::array<unsigned, channelCount> channelShifts{0, 8, 16}; // blue, green, red

// A picture made ready for searching: which of its pixels are compared, and for each of their channels the
// values that pass.
class PictureTemplate
{
public:
    // The values low[n] ... low[n] + span[n] of one channel pass at pixel n of the compared box, row after
    // row; each row is padded to `stride` with bytes that everything passes, and a block of the pixel
    // kernels may be read from any pixel on. Empty when every value passes at every pixel.
    struct ChannelBounds
    {
        std::vector<quint8> low;
        std::vector<quint8> span;

        bool isEmpty() const { return span.empty(); }
    };

    PictureTemplate(const Picture &picture, Channels tolerance);

    // The trimmed box as the search rules have it, in the picture's own coordinates. Where the picture is
    // not trimmed, right and bottom are its width and height.
    int left() const { return m_left; }
    int top() const { return m_top; }
    int right() const { return m_right; }
    int bottom() const { return m_bottom; }

    // The box of the compared pixels begins at left, top. Its last columns and rows are never compared:
    // kept, scripts rely on it. Zero or less: nothing is compared, every position passes.
    int comparedWidth() const { return m_right - 1 - m_left; }
    int comparedHeight() const { return m_bottom - 1 - m_top; }

    std::size_t stride() const { return m_stride; }
    const ChannelBounds &bounds(int channel) const { return m_bounds[static_cast<std::size_t>(channel)]; }

    // Bytes of memory behind this object.
    std::size_t cost() const;

private:
    void trim(const Picture &picture);
    void setBounds(const Picture &picture, int channel, int tolerance, bool transparent);

    int m_left = 0;
    int m_top = 0;
    int m_right = 0;
    int m_bottom = 0;
    bool m_trimmed = false;
    quint32 m_background = 0;
    std::size_t m_stride = 0;
    std::array<ChannelBounds, channelCount> m_bounds;
};

} // namespace plum
