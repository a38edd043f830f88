#pragma once

#include "platform/javascript.h"

#include <QThread>

#include <atomic>
#include <memory>

namespace plum {

// One evaluation of a script in a thread of its own, so that the user interface lives whatever the script
// does.
class ScriptEvaluation : public QThread
{
public:
    // Waits for the evaluation in an event loop. When the process ends in the meantime the script is
    // interrupted; one that does not take notice runs on until the process is gone.
    static JavaScript::Result await(std::unique_ptr<ScriptEvaluation> evaluation);

protected:
    ScriptEvaluation();

    // In the thread of its own.
    virtual JavaScript::Result evaluate() = 0;

    // In another thread, at any time from the start on.
    virtual void interruptScript() = 0;

private:
    void run() final;

    JavaScript::Result m_result;
    std::atomic<bool> m_done = false;
};

} // namespace plum
