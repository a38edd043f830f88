#include "platform/linux/timer_descriptors.h"
#include "support/least_time.h"
#include "support/printers.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <vector>

using namespace Qt::StringLiterals;
using plum::TimerDescriptors;
using plum::WaitableTimers;

namespace {

constexpr qint64 unitsPerMillisecond = 10'000;

class TimerDescriptorsTest : public testing::Test
{
protected:
    // Waits as scripts do and returns how long it took, in milliseconds.
    double waited(qint64 milliseconds)
    {
        QElapsedTimer elapsed;
        elapsed.start();
        const WaitableTimers::Handle timer = timers.create(u"wait"_s).handle;
        timers.set(timer, -milliseconds * unitsPerMillisecond);
        while (!timers.waitOrPump(timer)) { }
        timers.close(timer);
        return static_cast<double>(elapsed.nsecsElapsed()) / 1e6;
    }

    TimerDescriptors timers;
};

} // namespace

TEST_F(TimerDescriptorsTest, AWaitIsNeverTooShort)
{
    for (const int milliseconds : {1, 10, 30, 1})
        EXPECT_GE(waited(milliseconds), milliseconds);
}

TEST_F(TimerDescriptorsTest, OfSeveralSettingsTheLastCounts)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const WaitableTimers::Handle timer = timers.create(u"t"_s).handle;
    timers.set(timer, -1);
    timers.set(timer, -20 * unitsPerMillisecond);
    while (!timers.waitOrPump(timer)) { }
    EXPECT_GE(elapsed.nsecsElapsed(), 20'000'000);
    timers.close(timer);
}

TEST_F(TimerDescriptorsTest, ADueTimeThatHasPassedIsDueAtOnce)
{
    const WaitableTimers::Handle timer = timers.create(u"t"_s).handle;
    for (const qint64 due : {qint64(0), qint64(-1), qint64(5)}) {
        EXPECT_LT(plum::test::leastTime(2000,
                      [&] {
                          timers.set(timer, due);
                          while (!timers.waitOrPump(timer)) { }
                      }),
            2000);
    }
    timers.close(timer);
}

TEST_F(TimerDescriptorsTest, TheInterfaceLivesDuringAWait)
{
    int handled = 0;
    QTimer::singleShot(0, [&] { ++handled; });
    QTimer::singleShot(5, [&] { ++handled; });
    waited(60);
    EXPECT_EQ(handled, 2);
}

TEST_F(TimerDescriptorsTest, ALongerWaitInsideAWaitEndsBeforeIt)
{
    double inner = 0;
    QTimer::singleShot(0, [&] { inner = waited(40); });
    const double outer = waited(10);
    EXPECT_GE(inner, 40);
    EXPECT_GE(outer, inner);
}

TEST_F(TimerDescriptorsTest, AShorterWaitInsideAWaitDoesNotShortenIt)
{
    double inner = 0;
    QTimer::singleShot(0, [&] { inner = waited(5); });
    const double outer = waited(40);
    EXPECT_GE(inner, 5);
    EXPECT_GE(outer, 40);
}

TEST_F(TimerDescriptorsTest, ATimerThatWasDueStartsAnewForTheNextWait)
{
    // A closed timer's descriptor serves the next wait, whether it was due or not.
    const WaitableTimers::Handle due = timers.create(u"t"_s).handle;
    timers.set(due, -1);
    while (!timers.waitOrPump(due)) { }
    timers.close(due);
    EXPECT_GE(waited(20), 20);
    const WaitableTimers::Handle early = timers.create(u"t"_s).handle;
    timers.set(early, -unitsPerMillisecond);
    timers.waitOrPump(early);
    timers.close(early);
    EXPECT_GE(waited(20), 20);
}

TEST_F(TimerDescriptorsTest, ANameExistsAsLongAsItsTimer)
{
    const WaitableTimers::Created first = timers.create(u"runnerTimer0537"_s);
    EXPECT_FALSE(first.nameExisted);
    EXPECT_NE(first.handle, 0);
    const WaitableTimers::Created second = timers.create(u"runnerTimer0537"_s);
    EXPECT_TRUE(second.nameExisted);
    EXPECT_NE(second.handle, first.handle);
    EXPECT_FALSE(timers.create(u"runnerTimer0538"_s).nameExisted);
    timers.close(first.handle);
    EXPECT_TRUE(timers.create(u"runnerTimer0537"_s).nameExisted);
    TimerDescriptors others;
    EXPECT_FALSE(others.create(u"runnerTimer0537"_s).nameExisted);
}

TEST_F(TimerDescriptorsTest, ClosedTimersAreGivenBack)
{
    const auto openDescriptors
        = [] { return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size(); };
    const qsizetype before = openDescriptors();
    std::vector<WaitableTimers::Handle> nested;
    for (int i = 0; i < 300; ++i)
        nested.push_back(timers.create(u"t"_s).handle);
    EXPECT_GE(openDescriptors(), before + 300);
    for (const WaitableTimers::Handle timer : nested)
        timers.close(timer);
    EXPECT_LE(openDescriptors(), before + 4);
}

TEST_F(TimerDescriptorsTest, WithoutRoomThereIsNoTimer)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const WaitableTimers::Handle timer = timers.create(u"t"_s).handle;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(timer, 0);
}

TEST_F(TimerDescriptorsTest, NoTimerIsIgnored)
{
    for (const WaitableTimers::Handle none : {0, -1, 77}) {
        timers.set(none, -1);
        EXPECT_TRUE(timers.waitOrPump(none));
        timers.close(none);
    }
}
