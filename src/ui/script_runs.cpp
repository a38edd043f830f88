#include "ui/script_runs.h"

#include "engine/launcher.h"
#include "engine/run_start.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "library/app_library.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Each run that is started inside the wait of another takes its share of the stack.
constexpr int mostNested = 200;

} // namespace

ScriptRuns::ScriptRuns(Surroundings surroundings)
    : m(std::move(surroundings))
{
}

void ScriptRuns::connectEngine(RunState &state, RunStart &starts)
{
    m_state = &state;
    m_starts = &starts;
}

void ScriptRuns::runKeyword(const QString &keyword, bool remembersPath)
{
    // A list file may hold any text; only a folder of the library is an app.
    if (!AppLibrary::isFolderName(keyword))
        return;
    if (m_depth >= mostNested) {
        m.refused();
        return;
    }
    guarded([&] {
        m_starts->runApp(
            keyword, remembersPath ? RunStart::ScriptPath::Remembered : RunStart::ScriptPath::Kept);
    });
}

void ScriptRuns::runAll()
{
    guarded([this] { m_starts->runAll(); });
}

void ScriptRuns::resumeWith(const QString &variable, const QString &text)
{
    m_state->vardict.SetVar(variable, text);
    const bool isOver = m_state->runidx[0] >= m_state->runlist.size();
    guarded([this] { m_starts->resume(); });
    // A script on the command line ends after its last line, also when that line was the question.
    if (isOver && m_state->endsWithRun())
        m.endProcess(EXIT_SUCCESS);
}

void ScriptRuns::resumeClosed()
{
    if (m_state->endsWithRun()) {
        m.endProcess(EXIT_SUCCESS);
        return;
    }
    guarded([this] { resumeNext([this] { m_starts->resume(); }); });
}

bool ScriptRuns::hasLinesLeft() const
{
    const QStringList left
        = m_state->runlist.sliced(std::clamp<qsizetype>(m_state->runidx[0], 0, m_state->runlist.size()));
    return std::ranges::any_of(
        left, [](const QString &line) { return !line.isEmpty() && !line.startsWith("//"_L1); });
}

void ScriptRuns::guarded(const std::function<void()> &run)
{
    ++m_depth;
    try {
        run();
    } catch (const RunTimeError &error) {
        fail(error);
    }
    if (--m_depth == 0)
        m.left();
}

// A script start carries on after an error; in the launcher an error of a script is fatal.
void ScriptRuns::fail(const RunTimeError &error)
{
    const QString head = u"Run-time error '%1':"_s.arg(error.number());
    if (m_state->runidx[2] == 1) {
        m.report(u"%1:%2: run-time error %3: %4"_s.arg(m_state->runctx[0])
                     .arg(error.line().value_or(0) + 1)
                     .arg(error.number())
                     .arg(error.description()));
        return;
    }
    m.report(head + u' ' + error.description());
    m.showMessage(
        {.text = head + u"\n\n"_s + error.description(), .icon = MessageIcon::Critical, .systemModal = true});
    m.endProcess(EXIT_FAILURE);
}

} // namespace plum
