#pragma once

#include "platform/hand_watch.h"

#include <QtGlobal>

#include <memory>
#include <thread>

namespace plum {

// The user's keys through raw events of the X Input extension, which name the device that they come from:
// what the extension XTEST presses comes from devices of its own. A thread with a connection of its own, so
// that whatever the run does to the rest of the program cannot keep it from hearing.
class X11HandWatch final : public HandWatch
{
public:
    explicit X11HandWatch(const HandSigns &signs);
    ~X11HandWatch() override;
    Q_DISABLE_COPY_MOVE(X11HandWatch)

private:
    void watch(const HandSigns &signs) const;

    int m_end = -1; // an eventfd, readable when the thread is to end
    std::thread m_thread;
};

} // namespace plum
