#include "platform/x11/hand/held_key.h"

#include <gtest/gtest.h>

using namespace plum;
using namespace std::chrono_literals;

namespace {

constexpr auto held = 700ms;

HeldKey::Clock::time_point at(std::chrono::milliseconds time)
{
    return HeldKey::Clock::time_point(1h + time);
}

} // namespace

TEST(HeldKey, IsHeldAfterItsTime)
{
    HeldKey key;
    EXPECT_FALSE(key.lookAgainAt(held, at(0ms)));
    key.press(at(0ms));
    EXPECT_FALSE(key.isHeldFor(held, at(699ms)));
    EXPECT_EQ(key.lookAgainAt(held, at(10ms)), at(700ms));
    EXPECT_TRUE(key.isHeldFor(held, at(700ms)));
    key.forget();
    EXPECT_FALSE(key.isHeldFor(held, at(800ms)));
}

TEST(HeldKey, IsHeldWhileItRepeatsItself)
{
    HeldKey key;
    key.press(at(0ms));
    for (auto time = 400ms; time < 700ms; time += 40ms) {
        key.release(at(time));
        key.press(at(time + 1ms));
    }
    EXPECT_TRUE(key.isHeldFor(held, at(705ms)));
    HeldKey pressedAgain;
    pressedAgain.press(at(0ms));
    for (auto time = 400ms; time < 700ms; time += 40ms)
        pressedAgain.press(at(time));
    EXPECT_TRUE(pressedAgain.isHeldFor(held, at(705ms)));
}

TEST(HeldKey, BeginsAnewAfterAFingerHasLetGo)
{
    HeldKey key;
    key.press(at(0ms));
    key.release(at(500ms));
    EXPECT_TRUE(key.lookAgainAt(held, at(510ms)));
    EXPECT_FALSE(key.lookAgainAt(held, at(600ms)));
    key.press(at(600ms));
    EXPECT_FALSE(key.isHeldFor(held, at(800ms)));
    EXPECT_TRUE(key.isHeldFor(held, at(1300ms)));
}

TEST(HeldKey, IsNotHeldWhenItIsLetGoAtTheLastMoment)
{
    HeldKey key;
    key.press(at(0ms));
    key.release(at(695ms));
    EXPECT_FALSE(key.isHeldFor(held, at(700ms)));
    EXPECT_FALSE(key.isHeldFor(held, at(900ms)));
}
