#pragma once

namespace plum {

// True when this process may do everything on this computer (root, under Unix). A browser engine refuses to
// build its sandbox then.
bool isAllPowerful();

} // namespace plum
