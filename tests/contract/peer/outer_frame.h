#pragma once

#include <QRect>
#include <QWidget>

namespace plum::contract {

// The window with its frame as this system counts it, asked by the window's own program.
QRect outerFrame(const QWidget &window);

} // namespace plum::contract
