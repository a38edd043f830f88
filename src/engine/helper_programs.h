#pragma once

#include <QLatin1StringView>

namespace plum {

// The helper programs, below the program folder, and how the fields of their command lines are joined.
inline constexpr QLatin1StringView browserHelper("\\config\\module\\net\\browser\\browser.exe");
inline constexpr QLatin1StringView browserFieldSeparator("|||");
inline constexpr QLatin1StringView downloadHelper("\\config\\module\\download\\download.exe");
inline constexpr QLatin1StringView downloadFieldSeparator("@@@");

} // namespace plum
