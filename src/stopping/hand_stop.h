#pragma once

#include "platform/hand_watch.h"
#include "stopping/hand_options.h"
#include "stopping/input_gate.h"

#include <functional>
#include <memory>

namespace plum {

class Platform;
class StopSignal;

// Raises the signal when the user's hand wants a run to end, and tells the gate when the hand is at work. The
// hand is looked at only while a run goes on or waits for an answer.
class HandStop
{
public:
    // `keyword`: that of the app that is running; empty for a script on the command line.
    HandStop(Platform &platform, StopSignal &stop, std::function<QString()> keyword);

    // The options are read with each run, so that a changed setting counts at once.
    void setWatching(bool isWatching);

    // Runs are scoped, whatever the options say.
    void setScoped() { m_isScoped = true; }

    // Lets go of every key and button that runs hold.
    void releaseKeys();

    InputGate &gate() { return m_gate; }

private:
    Platform &m_platform;
    StopSignal &m_stop;
    std::function<QString()> m_keyword;
    HandOptions m_options;
    InputGate m_gate;
    bool m_isScoped = false;
    bool m_isWatching = false;
    std::unique_ptr<HandWatch> m_watch;
};

} // namespace plum
