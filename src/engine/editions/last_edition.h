#pragma once

namespace plum {

// The last edition of the language that this program knows.
inline constexpr int lastEdition = 2;

} // namespace plum
