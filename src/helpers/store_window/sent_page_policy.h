#pragma once

#include <QLatin1StringView>

namespace plum {

// What a page that another program has sent may have, in the words of a Content-Security-Policy: what it
// brought along. Nothing is fetched from anywhere.
inline constexpr QLatin1StringView sentPagePolicy(
    "default-src 'none'; script-src 'unsafe-inline' 'unsafe-eval' data: blob:; style-src 'unsafe-inline' "
    "data: "
    "blob:; img-src data: blob:; font-src data: blob:; media-src data: blob:; frame-src data: blob:; "
    "worker-src blob:; form-action 'none'; base-uri 'none'");

} // namespace plum
