#pragma once

#include <functional>

namespace plum {

class HiddenWindow;

// Turns what asks this process to end into a call from the event loop: the end of the session, a request to
// the process as a whole (as `taskkill` sends it), and the keys and the closing of the console that it was
// started from. At most one instance exists at a time, since the console's requests belong to the process.
class EndRequests
{
public:
    // `interrupted`: by Ctrl+C or Ctrl+Break in the console.
    EndRequests(HiddenWindow &window, std::function<void()> end, std::function<void()> interrupted);
    ~EndRequests();
    EndRequests(const EndRequests &) = delete;
    EndRequests &operator=(const EndRequests &) = delete;

private:
    std::function<void()> m_end;
    std::function<void()> m_interrupted;
};

} // namespace plum
