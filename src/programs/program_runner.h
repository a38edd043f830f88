#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace plum {

class Waiter;

// How a program that was waited for has ended.
struct ProgramResult
{
    enum class Outcome {
        NotStarted, // there is no such program, or the system refused it
        TimedOut, // it ran longer than allowed and was killed
        Crashed,
        TooMuchOutput, // more than `ProgramRunner::largestOutput`; it was killed
        Ended,
    };

    Outcome outcome = Outcome::NotStarted;
    int status = 0; // what it ended with
    QByteArray output; // all that it wrote to its standard output
};

// Runs a program and waits for its end, the user interface living meanwhile.
class ProgramRunner
{
public:
    static constexpr qint64 largestOutput = qint64(64) << 20;

    virtual ~ProgramRunner() = default;

    // `program` is a path as the system writes it, or a name that the system looks up in PATH. The arguments
    // reach it as they are. Its standard input is empty; what it writes to standard error goes where this
    // program's does.
    virtual ProgramResult run(const QString &program, const QStringList &arguments, qint64 milliseconds) = 0;
};

// The same with the system's processes.
class ProcessRunner final : public ProgramRunner
{
public:
    explicit ProcessRunner(Waiter &waiter)
        : m_waiter(waiter)
    {
    }

    ProgramResult run(const QString &program, const QStringList &arguments, qint64 milliseconds) override;

private:
    Waiter &m_waiter;
};

} // namespace plum
