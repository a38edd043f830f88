#include "engine/waiter.h"
#include "waits/patience.h"

#include <QList>

#include <gtest/gtest.h>

using plum::Patience;

namespace {

// Time that goes by in waits alone.
class Pretended final : public plum::Waiter
{
public:
    void Wait(double milliseconds) override { now += static_cast<qint64>(milliseconds); }
    void Wait(const QString &) override { FAIL(); }

    qint64 now = 1000;
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
