#include "engine/conversions.h"
#include "support/raised_by.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

TEST(Conversions, ReadDecimalNumbers)
{
    EXPECT_EQ(toInt16(u"12"), 12);
    EXPECT_EQ(toInt16(u"-12"), -12);
    EXPECT_EQ(toInt16(u"+12"), 12);
    EXPECT_EQ(toInt16(u"007"), 7);
    EXPECT_EQ(toInt16(u"1e3"), 1000);
    EXPECT_EQ(toInt16(u"1E+3"), 1000);
    EXPECT_EQ(toInt32(u"5e-1"), 0);
    EXPECT_DOUBLE_EQ(toDouble(u"-0.5"), -0.5);
    EXPECT_DOUBLE_EQ(toDouble(u".5"), 0.5);
    EXPECT_DOUBLE_EQ(toDouble(u"1."), 1);
}

TEST(Conversions, IgnoreBlanksAroundANumber)
{
    EXPECT_EQ(toInt16(u"  12\t"), 12);
}

TEST(Conversions, WhatIsNoNumberIsATypeMismatch)
{
    const QStringList texts{u""_s, u" "_s, u"abc"_s, u"1a"_s, u"1 2"_s, u"1,5"_s, u"--1"_s, u"+"_s, u"."_s,
        u"e5"_s, u"1e"_s, u"1e+"_s, u"inf"_s, u"nan"_s, u"0x10"_s, u"1:2"_s, u"\u0661"_s,
        QString::fromLatin1("1\0002", 3)};
    for (const QString &text : texts) {
        EXPECT_EQ(raisedBy([&] { toInt16(text); }), RunTimeError::TypeMismatch) << text.toStdString();
        EXPECT_EQ(raisedBy([&] { toInt32(text); }), RunTimeError::TypeMismatch) << text.toStdString();
        EXPECT_EQ(raisedBy([&] { toByte(text); }), RunTimeError::TypeMismatch) << text.toStdString();
        EXPECT_EQ(raisedBy([&] { toDouble(text); }), RunTimeError::TypeMismatch) << text.toStdString();
    }
}

TEST(Conversions, RoundHalvesToTheEvenNumber)
{
    EXPECT_EQ(toInt16(u"0.5"), 0);
    EXPECT_EQ(toInt16(u"1.5"), 2);
    EXPECT_EQ(toInt16(u"2.5"), 2);
    EXPECT_EQ(toInt16(u"3.5"), 4);
    EXPECT_EQ(toInt16(u"-0.5"), 0);
    EXPECT_EQ(toInt16(u"-1.5"), -2);
    EXPECT_EQ(toInt16(u"-2.5"), -2);
    EXPECT_EQ(toInt32(u"2.5000001"), 3);
    EXPECT_EQ(toByte(u"254.5"), 254);
}

TEST(Conversions, KeepToTheRangeOfTheResult)
{
    EXPECT_EQ(toInt16(u"32767.4"), 32767);
    EXPECT_EQ(toInt16(u"-32768.5"), -32768);
    EXPECT_EQ(raisedBy([] { toInt16(u"32767.5"); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([] { toInt16(u"-32769"); }), RunTimeError::Overflow);

    EXPECT_EQ(toInt32(u"2147483647"), 2147483647);
    EXPECT_EQ(toInt32(u"-2147483648"), -2147483647 - 1);
    EXPECT_EQ(raisedBy([] { toInt32(u"2147483648"); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([] { toInt32(u"-2147483649"); }), RunTimeError::Overflow);

    EXPECT_EQ(toByte(u"255"), 255);
    EXPECT_EQ(toByte(u"-0.5"), 0);
    EXPECT_EQ(raisedBy([] { toByte(u"255.5"); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([] { toByte(u"-1"); }), RunTimeError::Overflow);
}

TEST(Conversions, NumbersBeyondADoubleOverflowAndTinyOnesAreZero)
{
    EXPECT_EQ(raisedBy([] { toDouble(u"1e400"); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([] { toInt16(u"-1e400"); }), RunTimeError::Overflow);
    EXPECT_DOUBLE_EQ(toDouble(u"1e-400"), 0);
    EXPECT_EQ(toInt16(u"1e-99999999999"), 0);
}

TEST(Conversions, DoublesBecomeIntegersByTheSameRules)
{
    EXPECT_EQ(toInt16(2.5), 2);
    EXPECT_EQ(toInt32(-3.5), -4);
    EXPECT_EQ(raisedBy([] { toInt16(32768.0); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([] { toInt32(std::nan("")); }), RunTimeError::Overflow);
}

TEST(Conversions, SumsWrapAtSixteenBits)
{
    EXPECT_EQ(wrappingSum(1, -2), -1);
    EXPECT_EQ(wrappingSum(32767, 1), -32768);
    EXPECT_EQ(wrappingSum(-32768, -1), 32767);
    EXPECT_EQ(wrappingSum(-32768, -32768), 0);
}

TEST(Conversions, HexBytesAreExactlyTwoDigits)
{
    EXPECT_EQ(hexByte(u"00"), 0);
    EXPECT_EQ(hexByte(u"fF"), 255);
    EXPECT_EQ(hexByte(u"1A"), 26);
    for (const QStringView text : {u"", u"1", u"123", u"g0", u" 1", u"+1", u"-1"})
        EXPECT_EQ(raisedBy([&] { hexByte(text); }), RunTimeError::TypeMismatch)
            << text.toString().toStdString();
}
