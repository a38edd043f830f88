#include "platform/script_evaluation.h"

#include <QEventLoop>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// How long an interrupted script may take to notice, in milliseconds.
constexpr unsigned long interruptionPatience = 500;

// The engines need this much for scripts that recurse deeply; they raise an error before they run out.
constexpr uint deepStack = 8U << 20;

} // namespace

ScriptEvaluation::ScriptEvaluation()
{
    setStackSize(deepStack);
}

void ScriptEvaluation::run()
{
    m_result = evaluate();
    m_done = true;
}

JavaScript::Result ScriptEvaluation::await(std::unique_ptr<ScriptEvaluation> evaluation)
{
    QEventLoop loop;
    QObject::connect(evaluation.get(), &QThread::finished, &loop, &QEventLoop::quit);
    evaluation->start();
    loop.exec();
    // The loop also ends when the process is about to.
    if (!evaluation->m_done)
        evaluation->interruptScript();
    if (!evaluation->wait(interruptionPatience) && !evaluation->m_done) {
        // A script deep inside one of the engine's own functions cannot be interrupted; the process ends with
        // it still running.
        static_cast<void>(evaluation.release());
        return {false, u"The process is ending."_s};
    }
    evaluation->wait();
    return evaluation->m_result;
}

} // namespace plum
