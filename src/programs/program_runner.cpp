#include "programs/program_runner.h"

#include "engine/waiter.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>

#include <algorithm>

namespace plum {

namespace {

// Short at first, so that a program that ends at once costs no time.
constexpr double shortestPause = 2;
constexpr double longestPause = 50;

} // namespace

ProgramResult ProcessRunner::run(const QString &program, const QStringList &arguments, qint64 milliseconds)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted())
        return {};

    QElapsedTimer time;
    time.start();
    QByteArray output;
    // Also when the run is stopped inside the wait.
    const auto kill = qScopeGuard([&process] {
        if (process.state() == QProcess::NotRunning)
            return;
        process.kill();
        process.waitForFinished();
    });
    double pause = shortestPause;
    while (process.state() != QProcess::NotRunning) {
        if (time.elapsed() >= milliseconds)
            return {ProgramResult::Outcome::TimedOut, 0, {}};
        m_waiter.Wait(pause);
        pause = std::min(pause * 2, longestPause);
        output += process.readAllStandardOutput();
        if (output.size() > largestOutput)
            return {ProgramResult::Outcome::TooMuchOutput, 0, {}};
    }
    output += process.readAllStandardOutput();
    if (process.exitStatus() == QProcess::CrashExit)
        return {ProgramResult::Outcome::Crashed, 0, output};
    return {ProgramResult::Outcome::Ended, process.exitCode(), output};
}

} // namespace plum
