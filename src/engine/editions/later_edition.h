#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace plum {

struct RunLimit;

// Which edition of the language a script asks for: `//edition:N` as its first line, or as the second behind a
// `//guide:` line. A script that asks for none has the first.
struct AskedEdition
{
    int number = 1;
    int line = 1; // where it asks, counted from 1
};

AskedEdition askedEdition(const QByteArray &script);

// A script of a later edition on its way to a run.
struct ScriptStart
{
    QByteArray text = {};
    QString path = {}; // as people name it
    QString fullPath = {}; // what `os.path_pfold` is worked out from
    QString keyword = {}; // empty for a script on the command line
    bool endsProcess = false; // the process ends with the run
    std::shared_ptr<const RunLimit> limit = {}; // what it may do; null: no limit

    QString app() const;
};

// A run that waits for the user: its number, and 0 for none.
using RunTicket = quint64;

// What became of the tip or question that a run waits for.
struct Answer
{
    bool isGiven = false; // the question was confirmed
    QString variable = {};
    QString text = {};
};

// Runs the scripts of an edition behind the first. At most one run waits for the user.
class LaterEdition
{
public:
    virtual ~LaterEdition() = default;

    // Runs a script to its end, to where it waits for the user, or to the ScriptError that it raises.
    virtual void run(const ScriptStart &script) = 0;

    // The run that goes on right now, the innermost of them.
    virtual RunTicket current() const = 0;

    // Goes on with the run that waits. A run that waits no more is left alone.
    virtual void resume(RunTicket ticket, const Answer &answer) = 0;

    virtual void endWaitingRun() = 0;
};

} // namespace plum
