#pragma once

#include "platform/hand_watch.h"

#include <functional>
#include <memory>

namespace plum {

class Platform;
class StopSignal;

// Raises the signal when the user's hand wants a run to end. The keyboard is looked at only while a run goes
// on or waits for an answer.
class HandStop
{
public:
    // `hotkey` is asked for with each run, so that a changed setting counts at once.
    HandStop(Platform &platform, StopSignal &stop, std::function<StopHotkey()> hotkey);

    void setWatching(bool isWatching);

    // Lets go of every key and button that runs hold.
    void releaseKeys();

private:
    Platform &m_platform;
    StopSignal &m_stop;
    std::function<StopHotkey()> m_hotkey;
    std::unique_ptr<HandWatch> m_watch;
};

} // namespace plum
