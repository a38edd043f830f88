#include "commands/points.h"
#include "support/printers.h"
#include "support/raised_by.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

TEST(ScriptPoint, IsTwoNumbersWithAColon)
{
    EXPECT_EQ(ScriptPoint::fromText(u"10:-20"_s).toPoint(), QPoint(10, -20));
    EXPECT_EQ(ScriptPoint::fromText(u"1.5:2.5"_s).toPoint(), QPoint(2, 2));
    EXPECT_EQ(ScriptPoint::fromText(u"1:2:3"_s).toPoint(), QPoint(1, 2));
    EXPECT_EQ(ScriptPoint::fromText(u"10:-20"_s).toText(), u"10:-20"_s);
}

TEST(ScriptPoint, OneNumberIsBothCoordinates)
{
    EXPECT_EQ(ScriptPoint::fromText(u"100"_s).toPoint(), QPoint(100, 100));
}

TEST(ScriptPoint, CoordinatesAreSixteenBits)
{
    EXPECT_EQ(ScriptPoint::fromText(u"-32768:32767"_s).toPoint(), QPoint(-32768, 32767));
    EXPECT_EQ(raisedBy([] { ScriptPoint::fromText(u"32768:0"_s); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([] { ScriptPoint::fromText(u"0:-32769"_s); }), RunTimeError::Overflow);
}

TEST(ScriptPoint, WhatIsNoNumberIsATypeMismatch)
{
    for (const QString &text : {QString(), u":"_s, u"1:"_s, u":1"_s, u"a:b"_s})
        EXPECT_EQ(raisedBy([&] { ScriptPoint::fromText(text); }), RunTimeError::TypeMismatch);
}

TEST(ScriptPoint, SumsWrapAtSixteenBits)
{
    EXPECT_EQ((ScriptPoint{32767, -32768} + ScriptPoint{1, -1}).toText(), u"-32768:32767"_s);
}
