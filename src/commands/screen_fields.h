#pragma once

#include "search/screen_search.h"

#include <QString>

namespace plum {

// The fields that say where on the screen something is looked for, and how exactly.

// The part of the screen that a script writes as "x:y:width:height"; the main screen for an empty text.
// Raises a type mismatch (13) or an overflow (6) for what are no 32-bit numbers, a subscript error (9) for
// fewer than four.
ScreenArea areaOf(const QString &text, Screen &screen);

// How far a picture's channels may be off: much in red, nearly anything in green, anything in blue.
inline constexpr Channels pictureTolerance{0x58, 0xDD, 0xFF};

} // namespace plum
