#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

namespace plum {

// How another process of Plum calls the launcher that runs already. It costs a start no socket, bus or
// thread.
class LauncherCall
{
public:
    virtual ~LauncherCall() = default;

    enum class Kind {
        Fetch, // a second start: it is to come forward
        Requests, // it is to look at what was left for it
    };

    // Calls `answer` from the event loop whenever another process calls this one. One at a time.
    static std::unique_ptr<LauncherCall> listen(std::function<void(Kind kind)> answer);

    // Calls `process`; one that does not listen takes no harm. False when there is none.
    static bool call(qint64 process, Kind kind);
};

} // namespace plum
