#pragma once

#include <QByteArray>

#include <span>
#include <vector>

namespace plum {

// The names of the interfaces that the Wayland compositor of WAYLAND_DISPLAY offers, asked for without any
// library of Wayland's: a process that goes on with X11 loads none. Empty without a compositor, and when it
// does not answer within a second.
std::vector<QByteArray> compositorOffer();

// Compositors that are driven in one way.
enum class CompositorFamily {
    Unknown,
    Wlroots,
    KWin,
    Mutter, // GNOME
};

// The family by what the compositor offers to this process. One that holds back what its family is driven by
// is Unknown: without that hardly a script gets far.
CompositorFamily familyOf(std::span<const QByteArray> offer);

} // namespace plum
