#pragma once

#include <functional>

namespace plum {

// Asks the session's tray, where there is one on the session bus, for a sign of life and calls `then` from
// the event loop when it has answered, or when there is none. While it hangs it is asked again and again: Qt
// would wait for it for the better part of a minute.
void whenTrayHostAnswers(const std::function<void()> &then);

} // namespace plum
