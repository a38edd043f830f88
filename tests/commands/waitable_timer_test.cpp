#include "commands/waitable_timer.h"
#include "platform/recording/recording_platform.h"
#include "support/printers.h"
#include "support/raised_by.h"

#include <QDateTime>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

constexpr qint64 unitRange = 4294967296; // 2^32 units, 429.4967296 s

class WaitableTimer : public testing::Test
{
protected:
    QStringList eventsOf(double milliseconds)
    {
        timer.Wait(milliseconds);
        return log.lines();
    }

    QString descriptionOf(const std::function<void()> &wait)
    {
        try {
            wait();
        } catch (const RunTimeError &error) {
            return error.description();
        }
        return {};
    }

    recording::Log log;
    recording::RecordingTimers timers{log};
    QDateTime now{QDate(2024, 1, 2), QTime(12, 5, 37)};
    clsWaitableTimer timer{timers, u"runner"_s, [this] { return now; }};
};

using DueTime = WaitableTimer;

} // namespace

TEST_F(DueTime, OfAWaitIsItsCountOfUnits)
{
    EXPECT_EQ(relativeDueTime(100), -1'000'000);
    EXPECT_EQ(relativeDueTime(10), -100'000);
    EXPECT_EQ(relativeDueTime(1), -10'000);
    EXPECT_EQ(relativeDueTime(0.5), -5'000);
    EXPECT_EQ(relativeDueTime(60'000), -600'000'000);
    EXPECT_EQ(relativeDueTime(200'000), -2'000'000'000);
}

TEST_F(DueTime, OfNoMillisecondsIsTheWholeRange)
{
    EXPECT_EQ(relativeDueTime(0), -unitRange);
    EXPECT_EQ(relativeDueTime(0.00001), -unitRange) << "less than one unit";
}

TEST_F(DueTime, WithARoundedUpQuotientIsOneRangeLonger)
{
    EXPECT_EQ(relativeDueTime(214'748), -2'147'480'000);
    EXPECT_EQ(relativeDueTime(214'749), -2'147'490'000 - unitRange);
    EXPECT_EQ(relativeDueTime(300'000), -3'000'000'000 - unitRange);
    EXPECT_EQ(relativeDueTime(429'496), -4'294'960'000 - unitRange);
    EXPECT_EQ(relativeDueTime(429'497), -4'294'970'000);
    EXPECT_EQ(relativeDueTime(600'000), -6'000'000'000);
    EXPECT_EQ(relativeDueTime(700'000), -7'000'000'000 - unitRange);
}

TEST_F(DueTime, RoundsAnExactHalfToTheEvenQuotient)
{
    EXPECT_EQ(relativeDueTime(214'748.3648), -2'147'483'648) << "0.5 rounds to 0";
    EXPECT_EQ(relativeDueTime(1'073'741.824), -10'737'418'240) << "2.5 rounds to 2";
    EXPECT_EQ(relativeDueTime(1'073'742), -10'737'420'000 - unitRange) << "just above 2.5 rounds to 3";
}

TEST_F(DueTime, OfANegativeWaitFollowsTheSameArithmetic)
{
    EXPECT_EQ(relativeDueTime(-100), -unitRange + 1'000'000);
}

TEST_F(DueTime, BeyondTheHighHalfOverflows)
{
    EXPECT_EQ(raisedBy([] { relativeDueTime(1e18); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([] { relativeDueTime(-1e18); }), RunTimeError::Overflow);
}

TEST_F(WaitableTimer, SetsAHundredMillisecondsAsAMillionUnits)
{
    EXPECT_EQ(eventsOf(100),
        (QStringList{u"timer create runnerTimer0537 0"_s, u"timer set -1 -1"_s, u"timer set -1 -1000000"_s,
            u"timer close"_s}));
}

TEST_F(WaitableTimer, NoMillisecondsSetTheLowHalfToZero)
{
    EXPECT_EQ(eventsOf(0)[2], u"timer set -1 0"_s);
}

TEST_F(WaitableTimer, IsNamedByMinuteAndSecond)
{
    now = QDateTime(QDate(2024, 12, 31), QTime(23, 0, 9));
    EXPECT_EQ(eventsOf(1)[0], u"timer create runnerTimer0009 0"_s);
}

TEST_F(WaitableTimer, ANameThatExistsSkipsThePreliminarySetting)
{
    timers.create(u"runnerTimer0537"_s);
    log.clear();
    EXPECT_EQ(eventsOf(100),
        (QStringList{u"timer create runnerTimer0537 183"_s, u"timer set -1 -1000000"_s, u"timer close"_s}));
}

TEST_F(WaitableTimer, PumpsUntilItIsDue)
{
    timers.pumps = 5;
    int pumped = 0;
    timers.onPump = [&] { ++pumped; };
    timer.Wait(100.0);
    EXPECT_EQ(pumped, 5);
}

TEST_F(WaitableTimer, ATextIsReadAsANumber)
{
    timer.Wait(u"2.5"_s);
    EXPECT_EQ(log.lines()[2], u"timer set -1 -25000"_s);
}

TEST_F(WaitableTimer, ATextThatIsNoNumberNamesTheWait)
{
    EXPECT_EQ(raisedBy([&] { timer.Wait(u"abc"_s); }), RunTimeError::TypeMismatch);
    EXPECT_EQ(descriptionOf([&] { timer.Wait(u"abc"_s); }),
        u"[clsWaitableTimer.Wait]Type mismatch: \"abc\" is not a number of milliseconds"_s);
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(WaitableTimer, AWaitThatIsTooLongNamesTheWaitAndClosesTheTimer)
{
    EXPECT_TRUE(descriptionOf([&] { timer.Wait(1e18); }).startsWith(u"[clsWaitableTimer.Wait]Overflow: "_s));
    EXPECT_EQ(log.lines().last(), u"timer close"_s);
}

TEST_F(WaitableTimer, WithoutATimerTheWaitFailsInsteadOfNeverEnding)
{
    timers.hasRoom = false;
    EXPECT_EQ(raisedBy([&] { timer.Wait(100.0); }), RunTimeError::InvalidProcedureCall);
    EXPECT_EQ(descriptionOf([&] { timer.Wait(u"100"_s); }),
        u"[clsWaitableTimer.Wait]Invalid procedure call or argument: the system has no room for another timer"_s);
}

TEST_F(WaitableTimer, WaitsMayNest)
{
    timers.pumps = 2;
    bool nested = false;
    timers.onPump = [&] {
        if (!nested) {
            nested = true;
            timer.Wait(5.0);
        }
    };
    timer.Wait(100.0);
    EXPECT_EQ(log.lines(),
        (QStringList{u"timer create runnerTimer0537 0"_s, u"timer set -1 -1"_s, u"timer set -1 -1000000"_s,
            u"timer create runnerTimer0537 183"_s, u"timer set -1 -50000"_s, u"timer close"_s,
            u"timer close"_s}));
}

TEST_F(WaitableTimer, AFailureInsideANestedWaitClosesBothTimers)
{
    struct Failure
    {
    };
    int pumped = 0;
    timers.onPump = [&] {
        if (++pumped == 1)
            timer.Wait(5.0);
        else
            throw Failure();
    };
    EXPECT_THROW(timer.Wait(100.0), Failure);
    EXPECT_EQ(log.lines().count(u"timer close"_s), 2);
}

TEST_F(WaitableTimer, EndsEarlyWhenItIsOver)
{
    timers.pumps = 5;
    int pumped = 0;
    timers.onPump = [&] { ++pumped; };
    timer.Wait(100.0, [&] { return pumped == 2; });
    EXPECT_EQ(pumped, 2);
    EXPECT_EQ(log.lines().last(), u"timer close"_s);
    timer.Wait(100.0, [] { return false; });
    EXPECT_EQ(pumped, 7);
}
