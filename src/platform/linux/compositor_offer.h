#pragma once

#include <QByteArray>

#include <vector>

namespace plum {

// The names of the interfaces that the Wayland compositor of WAYLAND_DISPLAY offers, asked for without any
// library of Wayland's: a process that goes on with X11 loads none. Empty without a compositor, and when it
// does not answer within a second.
std::vector<QByteArray> compositorOffer();

} // namespace plum
