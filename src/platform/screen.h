#pragma once

#include <QRect>
#include <QSize>

#include <span>

namespace plum {

// Pixels of a captured region: rows from the top, each pixel four bytes blue, green, red, and a fourth of
// no meaning. The memory belongs to the `Screen` and is valid until its next capture.
struct Capture
{
    QSize size;
    std::span<const quint32> pixels; // width * height, row after row without padding

    bool isEmpty() const { return pixels.empty(); }
};

// The picture that the user sees.
class Screen
{
public:
    virtual ~Screen() = default;

    // Size of the main screen in physical pixels; empty without a desktop.
    virtual QSize mainScreenSize() = 0;

    // The rectangle of the whole desktop, all screens together; empty without one.
    virtual QRect desktop() = 0;

    // Copies `region` (physical pixels of the whole desktop). What lies off the desktop is black.
    // An empty result for an empty region, one above 2^28 pixels, or when the system refuses.
    virtual Capture capture(const QRect &region) = 0;

    // The same without the windows that the system blends over the others, where it keeps these apart.
    virtual Capture capturePlainly(const QRect &region) { return capture(region); }

    // How many pixels, as they are counted here, a unit of Qt's is on the screen that Qt places at `place`.
    // `ratio`: how many of the device's own it is.
    virtual qreal pixelsOfUnit(const QRect & /*place*/, qreal ratio) { return ratio; }
};

} // namespace plum
