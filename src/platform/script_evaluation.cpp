#include "platform/script_evaluation.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QScopeGuard>

namespace plum {

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

void AwaitedEvaluations::giveUp()
{
    for (QEventLoop *loop : m_loops)
        loop->quit();
}

JavaScript::Result ScriptEvaluation::await(
    std::unique_ptr<ScriptEvaluation> evaluation, AwaitedEvaluations &awaited)
{
    QEventLoop loop;
    awaited.m_loops.push_back(&loop);
    const auto leave = qScopeGuard([&] { awaited.m_loops.pop_back(); });
    QObject::connect(evaluation.get(), &QThread::finished, &loop, &QEventLoop::quit);
    evaluation->start();
    loop.exec();
    // The loop also ends when it is given up, or the process is about to end.
    if (!evaluation->m_done)
        evaluation->interruptScript();
    if (!evaluation->wait(interruptionPatience) && !evaluation->m_done) {
        // A script deep inside one of the engine's own functions cannot be interrupted; it goes on until it
        // comes out of there, or the process ends.
        ScriptEvaluation *left = evaluation.release();
        connect(left, &QThread::finished, left, &QObject::deleteLater);
        return {false, QCoreApplication::translate("plum::Reason", "The evaluation was given up.")};
    }
    evaluation->wait();
    return evaluation->m_result;
}

} // namespace plum
