#pragma once

#include "platform/javascript.h"

#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

class QEventLoop;

namespace plum {

// The loops in which evaluations are waited for, the innermost last: what runs inside a wait may evaluate,
// too.
class AwaitedEvaluations
{
public:
    // Every one that waits now is given up.
    void giveUp();

private:
    friend class ScriptEvaluation;
    std::vector<QEventLoop *> m_loops;
};

// One evaluation of a script in a thread of its own, so that the user interface lives whatever the script
// does.
class ScriptEvaluation : public QThread
{
public:
    // Waits for the evaluation in an event loop, as one of `awaited`. When it is given up or the process ends
    // in the meantime the script is interrupted; one that does not take notice runs on until the process is
    // gone.
    static JavaScript::Result await(
        std::unique_ptr<ScriptEvaluation> evaluation, AwaitedEvaluations &awaited);

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
