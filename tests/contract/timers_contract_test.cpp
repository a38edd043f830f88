#include "contract/contract_test.h"

#include "platform/waitable_timers.h"
#include "support/least_time.h"

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
        patience.start(test::patience);
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
        const qint64 enough = milliseconds + 2000;
        const qint64 least = test::leastTime(enough, [&] {
            QElapsedTimer time;
            time.start();
            const auto timer = startedTimer(milliseconds);
            waitFor(timer);
            timers().close(timer);
            // A due time counts from the system's clock, which may stand between two of its ticks.
            EXPECT_GE(static_cast<double>(time.nsecsElapsed()) / 1e6, milliseconds - 1.0);
        });
        EXPECT_LT(least, enough);
    }
}

TEST_F(TimersInTime, areDueAtOnceForATimeThatHasPassed)
{
    const auto timer = timers().create(u"past"_s).handle;
    EXPECT_LT(test::leastTime(2000,
                  [&] {
                      timers().set(timer, 1); // a point in time, long ago
                      waitFor(timer);
                  }),
        2000);
    timers().close(timer);
}

TEST_F(TimersInTime, lastSettingCounts)
{
    const auto timer = timers().create(u"again"_s).handle;
    timers().set(timer, -600'000 * unitsPerMillisecond);
    timers().set(timer, -10 * unitsPerMillisecond);
    waitFor(timer); // which has less patience than the first setting
    timers().close(timer);
}

TEST_F(TimersInTime, letTheInterfaceLive)
{
    constexpr int enough = 10;
    const auto timer = startedTimer(600'000);
    int ticks = 0;
    QTimer ticking;
    QObject::connect(&ticking, &QTimer::timeout, [&] {
        if (++ticks == enough)
            timers().set(timer, -unitsPerMillisecond);
    });
    ticking.start(5);
    waitFor(timer);
    EXPECT_GE(ticks, enough);
    timers().close(timer);
}

TEST_F(TimersInTime, areNotDueWhileOthersAre)
{
    // Longer than a machine may stand still before the wait begins.
    constexpr int milliseconds = 1500;
    const auto late = startedTimer(milliseconds, u"late"_s);
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
    EXPECT_GE(time.elapsed(), milliseconds - 2);
    timers().close(late);
}

} // namespace plum::contract
