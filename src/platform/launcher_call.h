#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

namespace plum {

// How a second start asks the launcher that runs already to come forward. It costs a start no socket, bus or
// thread.
class LauncherCall
{
public:
    virtual ~LauncherCall() = default;

    // Calls `answer` from the event loop whenever another process calls this one. One at a time.
    static std::unique_ptr<LauncherCall> listen(std::function<void()> answer);

    // Calls `process`. One that does not listen takes no harm.
    static void call(qint64 process);
};

} // namespace plum
