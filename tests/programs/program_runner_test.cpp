#include "engine/waiter.h"
#include "programs/program_runner.h"
#include "support/printers.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::ProgramResult;

namespace {

class EventLoopWaiter final : public plum::Waiter
{
public:
    void Wait(double milliseconds) override
    {
        QElapsedTimer timer;
        timer.start();
        do
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        while (timer.elapsed() < static_cast<qint64>(milliseconds));
    }
    void Wait(const QString &) override { FAIL(); }
    void Wait(double, const std::function<bool()> &) override { FAIL(); }
};

ProgramResult sh(const QString &line, qint64 milliseconds = 20'000, const QStringList &more = {})
{
    EventLoopWaiter waiter;
    return plum::ProcessRunner(waiter).run(u"sh"_s, QStringList{u"-c"_s, line} + more, milliseconds);
}

} // namespace

TEST(ProgramRunner, GivesOutputAndStatus)
{
    const ProgramResult result = sh(u"echo some; echo other >&2; exit 3"_s);
    EXPECT_EQ(result.outcome, ProgramResult::Outcome::Ended);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "some\n");
}

TEST(ProgramRunner, HandsArgumentsOverAsTheyAre)
{
    const ProgramResult result
        = sh(u"printf '%s|' \"$@\""_s, 20'000, {u"sh"_s, u"a b"_s, u"\"q\""_s, u"*"_s, u""_s, u"$HOME"_s});
    EXPECT_EQ(result.output, "a b|\"q\"|*||$HOME|");
}

TEST(ProgramRunner, GivesAllOfALongOutput)
{
    EXPECT_EQ(sh(u"head -c 3000000 /dev/zero"_s).output.size(), 3'000'000);
}

TEST(ProgramRunner, HasNoInput)
{
    EXPECT_EQ(sh(u"cat; echo end"_s).output, "end\n");
}

TEST(ProgramRunner, GivesUpAfterItsTime)
{
    // No process of its own: it would outlive the shell, and who reads this test's errors would wait for it.
    EXPECT_EQ(sh(u"exec sleep 60"_s, 100).outcome, ProgramResult::Outcome::TimedOut);
}

TEST(ProgramRunner, TellsOfWhatDoesNotStartOrCrashes)
{
    EventLoopWaiter waiter;
    EXPECT_EQ(plum::ProcessRunner(waiter).run(u"/no/such/program"_s, {}, 1000).outcome,
        ProgramResult::Outcome::NotStarted);
    EXPECT_EQ(sh(u"kill -SEGV $$"_s).outcome, ProgramResult::Outcome::Crashed);
}
