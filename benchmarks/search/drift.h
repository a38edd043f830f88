#pragma once

#include "platform/screen.h"

#include <QRect>

namespace plum {

struct Picture;

// Captures `region` and looks for `picture` in it ten thousand times in a row, and prints the processor time
// of the first and of the last thousand: a search that leaves something behind becomes slower.
void printDrift(Screen &screen, const QRect &region, const Picture &picture);

} // namespace plum
