#pragma once

#include <QString>

namespace plum {

class RunView;

// A line of a script as it is carried out.
struct RunLine
{
    QString keyword = {}; // of the app; empty for a script on the command line
    QString file = {}; // a part's; empty for the script itself
    int number = 0; // counted from 1
    QString text = {}; // as it is written
};

// Hears what runs do: the one interface through which they tell. `RunState::observer` names who listens; a
// run that nobody listens to pays one comparison a line.
//
// Lines that are carried out inside another one (a run that was started while that one waited, a body that is
// repeated) begin and end between its beginning and its end.
class RunObserver
{
public:
    enum class LineEnd {
        Done,
        Rests, // until the user has answered or closed what is shown
        Failed,
        Stopped, // by the user
    };

    virtual ~RunObserver() = default;

    // Whether it is told of what comes next and of failures, where it may hold the run. No virtual function:
    // it is asked for before each line.
    bool holdsRuns() const { return m_holdsRuns; }

    // A script begins. `script`: the app's keyword, or the file of one on the command line.
    virtual void runBegins(const QString &script) = 0;

    // A line comes next. Whoever does not come back from here holds the run; who leaves with RunStopped ends
    // it.
    virtual void standsBefore(RunView &) { }

    virtual void lineBegins(const RunLine &line) = 0;

    // Field `index` (from 0) of the innermost line has come to `value`. Edition 1 may read one several times.
    virtual void fieldRead(int index, const QString &value) = 0;

    // Also between two lines, by an answer.
    virtual void variableSet(const QString &name, const QString &value) = 0;

    // The user has answered a question; the variable comes after this.
    virtual void answered(const QString &answer) = 0;

    // What the line wanted to do it was not allowed.
    virtual void refused(const QString &sentence) = 0;

    // The innermost line is over. `reason`: why it failed. A failure may be caught by the script.
    virtual void lineEnds(LineEnd how, const QString &reason) = 0;

    // The line has failed, and nothing has come of that yet; it can be held as above. `isCaught`: the script
    // goes on behind it.
    virtual void hasFailed(RunView &, const QString & /*reason*/, bool /*isCaught*/) { }

    // So many lines were not told of, since they followed each other too fast: lines that only compute.
    virtual void linesPassed(qint64 count) = 0;

    // Whether no line may be passed over, whatever that costs.
    virtual bool wantsEveryLine() const { return false; }

protected:
    explicit RunObserver(bool holdsRuns = false)
        : m_holdsRuns(holdsRuns)
    {
    }

private:
    bool m_holdsRuns;
};

} // namespace plum
