#pragma once

#include <QPoint>

#include <optional>

namespace plum {

class WaylandConnection;

// Where the pointer is. No program is told that of the whole desktop, but the one whose surface the pointer
// enters is: for a moment an invisible surface lies over every output.
std::optional<QPoint> probePointer(WaylandConnection &connection);

} // namespace plum
