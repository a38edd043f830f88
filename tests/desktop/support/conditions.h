#pragma once

#include <functional>

namespace plum {

// Waits until `condition` holds, the event loop running meanwhile, and returns whether it did within 20
// seconds: long enough for a machine that is busy with something else.
bool eventually(const std::function<bool()> &condition);

} // namespace plum
