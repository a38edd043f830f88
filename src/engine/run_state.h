#pragma once

#include "engine/variable_store.h"

#include <QStringList>

#include <array>
#include <memory>
#include <utility>

namespace plum {

class RunObserver;

// What the lines of one script may do, for who holds them to it. To the engine it is a name for whose lines
// are being carried out.
struct RunLimit
{
    virtual ~RunLimit() = default;
};

// What a run is made of. One instance lives as long as the process; a run that is started while another one
// waits shares it.
struct RunState
{
    // The script's lines, index 0 first.
    QStringList runlist;

    // [0] the first line of the next call of the run loop, or where a suspended run goes on;
    // [1] its last line; [2] 1 when the process was started with a script on its command line.
    std::array<qint16, 3> runidx{};

    // The line that is carried out, or was the last one that was.
    int currentLine = 0;

    // [0] the full path of the running script; [1] the run mode, "jb" for a script on the command line
    // (the process ends with it) or "bao" for the launcher.
    std::array<QString, 2> runctx;

    VariableStore vardict;

    // The keyword of the running app; empty for a script on the command line.
    QString currentKeyword;

    // Of the script in `runlist`, and of the line that is being carried out; null: no limit.
    std::shared_ptr<const RunLimit> runlistLimit;
    std::shared_ptr<const RunLimit> limit;

    // Why the last call was refused, as a sentence for people; empty when none was.
    QString refused;

    // What the user has answered to questions, the last ones.
    QStringList answers;

    void addAnswer(const QString &answer);

    // An answer to a question of edition 1.
    void takeAnswer(const QString &variable, const QString &answer);

    // Hears what runs do; null: nobody does.
    RunObserver *observer = nullptr;

    // The last file dropped onto the keyword box.
    QString droppedPath;

    bool endsWithRun() const { return runctx[1] == QLatin1StringView("jb"); }
};

// While it lives, what is worked out is not the run's: nobody hears of it, and a refusal does not count. What
// the run may not look at is refused all the same.
class Aside
{
public:
    Aside(RunState &state, std::shared_ptr<const RunLimit> limit)
        : m_state(state)
        , m_observer(std::exchange(state.observer, nullptr))
        , m_limit(std::exchange(state.limit, std::move(limit)))
        , m_refused(std::exchange(state.refused, {}))
    {
    }
    ~Aside()
    {
        m_state.observer = m_observer;
        m_state.limit = std::move(m_limit);
        m_state.refused = std::move(m_refused);
    }
    Q_DISABLE_COPY_MOVE(Aside)

    // Why something was refused meanwhile; empty when nothing was.
    const QString &refused() const { return m_state.refused; }

private:
    RunState &m_state;
    RunObserver *m_observer;
    std::shared_ptr<const RunLimit> m_limit;
    QString m_refused;
};

} // namespace plum
