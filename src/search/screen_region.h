#pragma once

#include "platform/screen.h"

#include <optional>

namespace plum {

// Where something was found, in pixels from the top left corner of a region.
struct Position
{
    qint64 x = 0;
    qint64 y = 0;

    bool operator==(const Position &) const = default;
};

// A region of the screen as a search sees it. Only the part on the desktop is held in memory; every other
// pixel is black, so a region of any size costs no more than the desktop.
struct ScreenRegion
{
    qint64 width = 0;
    qint64 height = 0;
    Position part; // of the captured part's top left corner
    Capture captured;

    bool isEmpty() const { return width <= 0 || height <= 0; }
};

// Whether windows count that the system blends over the others.
enum class LayeredWindows {
    Seen,
    Ignored,
};

// Captures a region. Nothing without a desktop or when the system refuses. The pixels belong to `screen`
// and are valid until its next capture.
std::optional<ScreenRegion> captureRegion(Screen &screen, qint32 x, qint32 y, qint32 width, qint32 height,
    LayeredWindows layered = LayeredWindows::Seen);

} // namespace plum
