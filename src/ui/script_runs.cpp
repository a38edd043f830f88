#include "ui/script_runs.h"

#include "engine/editions/script_error.h"
#include "engine/launcher.h"
#include "engine/run_start.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "library/app_library.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Each run that is started inside the wait of another takes its share of the stack.
constexpr int mostNested = 200;

} // namespace

ScriptRuns::ScriptRuns(Needs needs)
    : m(std::move(needs))
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

void ScriptRuns::noteAsking()
{
    m_asking = m_starts->asking();
    m_askingKeyword = m_state->currentKeyword;
}

void ScriptRuns::resumeLater(const Answer &answer)
{
    guarded([&] { m_starts->answer(std::exchange(m_asking, 0), answer); });
}

void ScriptRuns::resumeDismissed(bool withEnter, const QString &variable, const QString &text)
{
    if (m_asking != 0)
        resumeLater({withEnter, variable, text});
    else if (m_depth == 0)
        m.left();
}

void ScriptRuns::resumeWith(const QString &variable, const QString &text)
{
    if (m_asking != 0) {
        resumeLater({true, variable, text});
        return;
    }
    m_state->takeAnswer(variable, text);
    const bool isOver = m_state->runidx[0] >= m_state->runlist.size();
    guarded([this, isOver] {
        m_starts->resume();
        // A script on the command line ends after its last line, also when that line was the question.
        if (isOver && m_state->endsWithRun())
            m.endProcess(EXIT_SUCCESS);
    });
}

void ScriptRuns::resumeClosed()
{
    if (m_asking != 0) {
        resumeLater({});
        return;
    }
    if (m_state->endsWithRun()) {
        m.endProcess(EXIT_SUCCESS);
        return;
    }
    guarded([this] { resumeNext([this] { m_starts->resume(); }); });
}

bool ScriptRuns::hasLinesLeft() const
{
    if (m_asking != 0)
        return false;
    const QStringList left
        = m_state->runlist.sliced(std::clamp<qsizetype>(m_state->runidx[0], 0, m_state->runlist.size()));
    return std::ranges::any_of(
        left, [](const QString &line) { return !line.isEmpty() && !line.startsWith("//"_L1); });
}

void ScriptRuns::guarded(const std::function<void()> &run)
{
    if (++m_depth == 1)
        m.began();
    try {
        run();
    } catch (const RunTimeError &error) {
        fail(error);
    } catch (const ScriptError &error) {
        fail(error);
    } catch (const RunStopped &stopped) {
        catchStop(stopped);
    }
    if (--m_depth > 0)
        return;
    m.stop.lower();
    if (m_stopped)
        tellStopped();
    m.left();
}

// The runs around this one are left as well: each looks at the signal when its wait goes on.
void ScriptRuns::catchStop(const RunStopped &stopped)
{
    if (m_state->runidx[2] == 1) {
        m.endProcess(stoppedStatus);
        return;
    }
    if (m_stopped)
        return;
    m_stopped = stopped.place().value_or(RunStopped::Place());
    m.releaseKeys();
}

void ScriptRuns::stopWaiting()
{
    m_stopped = {.keyword = m_askingKeyword, .line = m_state->currentLine};
    m.releaseKeys();
    m.stop.lower();
    tellStopped();
    m.left();
}

void ScriptRuns::tellStopped()
{
    m_asking = 0;
    m_starts->abandon();
    m.wentWrong(QCoreApplication::translate("plum::ScriptRuns", "The run was stopped."));
    m.stopped(*std::exchange(m_stopped, std::nullopt));
}

// An error of a later edition ends the run, never the launcher. A script on the command line takes its
// process with it, as at its last line.
void ScriptRuns::fail(const ScriptError &error)
{
    m.reportMistakes(error);
    m.wentWrong(error.toText());
    if (m_state->runidx[2] == 1)
        m.endProcess(EXIT_FAILURE);
    else
        m.showMessage({.text = error.toText(), .icon = MessageIcon::Critical, .systemModal = true});
}

// The line as a report quotes it.
QString ScriptRuns::lineOf(const RunTimeError &error) const
{
    constexpr qsizetype mostShown = 200; // characters
    const QString line = m_state->runlist.value(error.line().value_or(-1));
    return line.size() > mostShown ? line.first(mostShown) + u'…' : line;
}

// A script start carries on after an error; in the launcher an error of a script is fatal.
void ScriptRuns::fail(const RunTimeError &error)
{
    const QString head = u"Run-time error '%1':"_s.arg(error.number());
    const int number = error.line().value_or(0) + 1;
    const QString line = lineOf(error);
    if (m_state->runidx[2] == 1) {
        m.report(u"%1:%2: run-time error %3: "_s.arg(m_state->runctx[0]).arg(number).arg(error.number())
            + error.description() + u" ("_s + line + u')');
        return;
    }
    const QString place = QCoreApplication::translate("plum::ScriptRuns", "%1, line %2:")
                              .arg(m_state->currentKeyword)
                              .arg(number);
    m.report(head + u' ' + error.description() + u" ("_s + place + u' ' + line + u')');
    m.wentWrong(error.description());
    m.showMessage({.text = head + u"\n\n"_s + error.description() + u"\n\n"_s + place + u'\n' + line,
        .icon = MessageIcon::Critical,
        .systemModal = true});
    m.endProcess(EXIT_FAILURE);
}

} // namespace plum
