#include "engine/waiter.h"
#include "waits/patience.h"

#include <QList>

#include <utility>

#include <gtest/gtest.h>

using plum::Patience;

namespace {

// Time that goes by in waits alone.
class Pretended final : public plum::Waiter
{
public:
    void Wait(double milliseconds) override { now += static_cast<qint64>(milliseconds); }
    void Wait(const QString &) override { FAIL(); }
    void Wait(double milliseconds, const std::function<bool()> &isOver) override
    {
        const qint64 end = now + static_cast<qint64>(milliseconds);
        while (now < end && !isOver())
            ++now;
    }

    qint64 now = 1000;
};

// News at some times, and at the first question, as always.
class PretendedNews final : public plum::News
{
public:
    PretendedNews(const Pretended &time, QList<qint64> times)
        : m_time(time)
        , m_times(std::move(times))
    {
    }

    bool arrived() override
    {
        bool any = std::exchange(m_isNew, false);
        while (!m_times.isEmpty() && m_times.first() <= m_time.now) {
            m_times.removeFirst();
            any = true;
        }
        return any;
    }

private:
    const Pretended &m_time;
    QList<qint64> m_times;
    bool m_isNew = true;
};

} // namespace

TEST(Patience, LooksAtOnceAndGoesOnAtOnce)
{
    Pretended time;
    const Patience patience(time, [&] { return time.now; });
    EXPECT_TRUE(patience.waitUntil(10'000, [] { return true; }));
    EXPECT_EQ(time.now, 1000);
}

TEST(Patience, LooksTwentyTimesASecondAndOnceMoreAtTheEnd)
{
    Pretended time;
    const Patience patience(time, [&] { return time.now; });
    int looks = 0;
    EXPECT_FALSE(patience.waitUntil(1020, [&] {
        ++looks;
        return false;
    }));
    EXPECT_EQ(looks, 22);
    EXPECT_EQ(time.now, 2020);
}

TEST(Patience, LooksOnceWithoutTime)
{
    Pretended time;
    const Patience patience(time, [&] { return time.now; });
    int looks = 0;
    EXPECT_FALSE(patience.waitUntil(0, [&] {
        ++looks;
        return false;
    }));
    EXPECT_EQ(looks, 1);
}

TEST(Patience, LeavesATurnToOthersBehindASlowLook)
{
    Pretended time;
    const Patience patience(time, [&] { return time.now; });
    QList<qint64> begins;
    patience.waitUntil(500, [&] {
        begins += time.now;
        time.now += 100;
        return false;
    });
    ASSERT_GE(begins.size(), 2);
    EXPECT_EQ(begins[1] - begins[0], 110);
}

class PatienceWithNews : public testing::Test
{
protected:
    // When it looked, for 2,500 ms at most, while there were news at these times.
    QList<qint64> looksWithNewsAt(const QList<qint64> &times)
    {
        const Patience patience(time, [this] { return time.now; });
        QList<qint64> looks;
        patience.waitUntil(
            2500,
            [&] {
                looks += time.now;
                return false;
            },
            [&] { return std::make_unique<PretendedNews>(time, times); });
        return looks;
    }

    Pretended time;
};

TEST_F(PatienceWithNews, LooksOnceASecondWhileThereAreNone)
{
    EXPECT_EQ(looksWithNewsAt({}), (QList<qint64>{1000, 1000, 2000, 3000, 3500}));
}

TEST_F(PatienceWithNews, LooksAtOnceWhenThereAreSome)
{
    EXPECT_EQ(looksWithNewsAt({1333, 2700}), (QList<qint64>{1000, 1000, 1333, 2333, 2700, 3500}));
}

TEST_F(PatienceWithNews, LeavesATurnToOthersWhenThereAreManyNews)
{
    EXPECT_EQ(looksWithNewsAt({1001, 1002, 1003, 1025}),
        (QList<qint64>{1000, 1000, 1010, 1020, 1030, 2030, 3030, 3500}));
}

TEST_F(PatienceWithNews, DoesNotListenForWhatIsThere)
{
    const Patience patience(time, [this] { return time.now; });
    EXPECT_TRUE(patience.waitUntil(
        100, [] { return true; },
        []() -> std::unique_ptr<plum::News> {
            ADD_FAILURE();
            return nullptr;
        }));
}

TEST_F(PatienceWithNews, LooksAgainAndAgainWhereNobodyTells)
{
    const Patience patience(time, [this] { return time.now; });
    int looks = 0;
    EXPECT_FALSE(patience.waitUntil(
        1000,
        [&] {
            ++looks;
            return false;
        },
        [] { return nullptr; }));
    EXPECT_EQ(looks, 21);
}
