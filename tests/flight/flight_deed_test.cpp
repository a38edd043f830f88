#include "flight/flight_deed.h"

#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

using Kind = FlightDeed::Kind;

TEST(FlightDeed, SaysItsValuesInWords)
{
    EXPECT_EQ((FlightDeed{Kind::PointerMoved, {u"33"_s, u"44"_s}}).toText(), u"pointer to 33:44"_s);
    EXPECT_EQ((FlightDeed{Kind::KeyUp, {u"16"_s}}).toText(), u"key 16 up"_s);
    EXPECT_EQ(FlightDeed{Kind::LeftDown}.toText(), u"button left down"_s);
    EXPECT_EQ((FlightDeed{Kind::WindowMoved, {u"7"_s, u"1"_s, u"2"_s}}).toText(), u"window 7 moved to 1:2"_s);
}

TEST(FlightDeed, LeavesMarksInValuesAlone)
{
    EXPECT_EQ((FlightDeed{Kind::JavaScriptFailed, {u"%2"_s, u"100%1 %"_s}}).toText(),
        u"JavaScript of %2 characters: failed, 100%1 %"_s);
}

TEST(FlightDeed, HasANameForPrograms)
{
    for (int number = 0; number <= static_cast<int>(Kind::NothingAlike); ++number) {
        const auto kind = static_cast<Kind>(number);
        EXPECT_EQ(FlightDeed::kindOf(FlightDeed::nameOf(kind)), kind) << number;
    }
    EXPECT_EQ(FlightDeed::kindOf(u"key 16 up"_s), std::nullopt);
}
