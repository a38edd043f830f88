#pragma once

namespace plum {

// Which Plum this is: "0.1.0 (6661c9079a)". A "+" behind the commit says that the sources are not quite that
// one's; where nobody knows the commit, the number stands alone.
extern const char *const version;

} // namespace plum
