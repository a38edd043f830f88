#pragma once

#include <QLatin1StringView>

namespace plum {

// How the fields of the helper programs' command lines are joined.
inline constexpr QLatin1StringView browserFieldSeparator("|||");
// The first field says what the second is; without either the first field is HTML.
inline constexpr QLatin1StringView browserUrlMarker("_tarnwick_url_");
inline constexpr QLatin1StringView browserHtmlMarker("_tarnwick_html_");
inline constexpr QLatin1StringView downloadFieldSeparator("@@@");

} // namespace plum
