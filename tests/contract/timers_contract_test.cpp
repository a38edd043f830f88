#include "contract/contract_test.h"

#include "platform/waitable_timers.h"

#include <QElapsedTimer>
#include <QTimer>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 unitsPerMillisecond = 10'000;

class TimersPort : public ContractTest
{
protected:
    WaitableTimers &timers() { return platform->timers(); }

    WaitableTimers::Handle startedTimer(qint64 milliseconds, const QString &name = u"contract"_s)
    {
        const WaitableTimers::Handle timer = timers().create(name).handle;
        timers().set(timer, -milliseconds * unitsPerMillisecond);
        return timer;
    }

    void waitFor(WaitableTimers::Handle timer)
    {
        QTimer patience;
        patience.setSingleShot(true);
        patience.start(30'000);
        bool isDue = false;
        while (!isDue && patience.isActive())
            isDue = timers().waitOrPump(timer);
        EXPECT_TRUE(isDue);
    }
};

// Real time passes.
class TimersInTime : public TimersPort
{
};

} // namespace

TEST_F(TimersPort, tellThatANameIsTaken)
{
    const auto first = timers().create(u"taken"_s);
    EXPECT_NE(first.handle, 0);
    EXPECT_FALSE(first.nameExisted);
    const auto second = timers().create(u"taken"_s);
    EXPECT_NE(second.handle, 0);
    EXPECT_TRUE(second.nameExisted);
    const auto other = timers().create(u"free"_s);
    EXPECT_FALSE(other.nameExisted);
    timers().close(other.handle);
    timers().close(first.handle);
    timers().close(second.handle);
}

TEST_F(TimersPort, giveANameBackWithTheirLastTimer)
{
    const auto first = timers().create(u"shared"_s);
    const auto second = timers().create(u"shared"_s);
    timers().close(first.handle);
    const auto third = timers().create(u"shared"_s);
    EXPECT_TRUE(third.nameExisted);
    timers().close(second.handle);
    timers().close(third.handle);
    const auto last = timers().create(u"shared"_s);
    EXPECT_FALSE(last.nameExisted);
    timers().close(last.handle);
}

TEST_F(TimersPort, ignoreHandleZero)
{
    const auto kept = startedTimer(1, u"kept"_s);
    timers().close(0);
    const auto second = timers().create(u"kept"_s);
    EXPECT_TRUE(second.nameExisted);
    timers().close(second.handle);
    waitFor(kept);
    timers().close(kept);
    timers().close(0);
    const auto last = timers().create(u"kept"_s);
    EXPECT_FALSE(last.nameExisted);
    timers().close(last.handle);
}

TEST_F(TimersPort, areDueSoonerOrLater)
{
    const auto timer = startedTimer(20);
    waitFor(timer);
    timers().close(timer);
}

TEST_F(TimersInTime, areDueAfterTheirTimeAndNotBefore)
{
    for (const int milliseconds : {1, 5, 50, 120}) {
        QElapsedTimer time;
        time.start();
        const auto timer = startedTimer(milliseconds);
        waitFor(timer);
        timers().close(timer);
        const double elapsed = static_cast<double>(time.nsecsElapsed()) / 1e6;
        // A due time counts from the system's clock, which may stand between two of its ticks.
        EXPECT_GE(elapsed, milliseconds - 1.0);
        EXPECT_LT(elapsed, milliseconds + 2000.0);
    }
}

TEST_F(TimersInTime, areDueAtOnceForATimeThatHasPassed)
{
    const auto timer = timers().create(u"past"_s).handle;
    timers().set(timer, 1); // a point in time, long ago
    QElapsedTimer time;
    time.start();
    waitFor(timer);
    EXPECT_LT(time.elapsed(), 2000);
    timers().close(timer);
}

TEST_F(TimersInTime, lastSettingCounts)
{
    const auto timer = timers().create(u"again"_s).handle;
    timers().set(timer, -600'000 * unitsPerMillisecond);
    timers().set(timer, -10 * unitsPerMillisecond);
    QElapsedTimer time;
    time.start();
    waitFor(timer);
    EXPECT_LT(time.elapsed(), 2000);
    timers().close(timer);
}

TEST_F(TimersInTime, letTheInterfaceLive)
{
    int ticks = 0;
    QTimer ticking;
    QObject::connect(&ticking, &QTimer::timeout, [&] { ++ticks; });
    ticking.start(5);
    const auto timer = startedTimer(300);
    waitFor(timer);
    EXPECT_GE(ticks, 10);
    timers().close(timer);
}

TEST_F(TimersInTime, areNotDueWhileOthersAre)
{
    const auto late = startedTimer(250, u"late"_s);
    QElapsedTimer time;
    time.start();
    bool isDone = false;
    QTimer::singleShot(0, [&] {
        // A wait inside a wait, as a script has it that a key starts during another one's pause.
        const auto early = startedTimer(20, u"early"_s);
        waitFor(early);
        timers().close(early);
        isDone = true;
    });
    waitFor(late);
    EXPECT_TRUE(isDone);
    EXPECT_GE(time.elapsed(), 248);
    timers().close(late);
}

} // namespace plum::contract
