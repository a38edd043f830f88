#pragma once

#include <QSize>

#include <span>
#include <vector>

class QImage;

namespace plum {

struct Capture;
struct ScreenRegion;

// A small picture of the screen, in as little memory as can be had in little time: each of its entries is a
// colour in the lower 24 bits and in the upper 8 how many further pixels have the same one.
class ScreenTile
{
public:
    static constexpr QSize size{160, 120}; // pixels, of a tile around the pointer
    static constexpr QSize largest{240, 180}; // of what a searched region is brought down to

    ScreenTile() = default;

    explicit ScreenTile(const Capture &capture);

    // The region made smaller by leaving out rows and columns, in its own proportions.
    explicit ScreenTile(const ScreenRegion &region);

    bool isEmpty() const { return m_runs.empty(); }
    QImage toImage() const;
    qsizetype bytes() const;

    friend bool operator==(const ScreenTile &, const ScreenTile &) = default;

private:
    void addRow(std::span<const quint32> pixels);

    QSize m_size;
    std::vector<quint32> m_runs;
};

} // namespace plum
