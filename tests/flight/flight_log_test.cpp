#include "flight/flight_log.h"

#include "support/printers.h"

#include <gtest/gtest.h>

using namespace plum;

TEST(FlightLog, GivesTheOldestEntriesUpForNewOnes)
{
    FlightLog log;
    log.begin(QStringLiteral("x"));
    constexpr int lines = 5000;
    for (int number = 1; number <= lines; ++number)
        log.add({.line = {.number = number, .text = QString(2000, QLatin1Char('a'))}});
    EXPECT_LE(log.bytes(), FlightLog::mostBytes);
    EXPECT_GT(log.forgotten(), 0);
    EXPECT_EQ(log.entries().back().line.number, lines);
    EXPECT_EQ(log.entries().front().line.number, log.forgotten() + 1);
    EXPECT_EQ(log.find(0), nullptr);
    ASSERT_NE(log.find(log.last()), nullptr);
    EXPECT_EQ(log.find(log.last())->line.number, lines);
}

TEST(FlightLog, CountsWhatAnEntryGetsAndLoses)
{
    FlightLog log;
    log.begin({});
    log.add({});
    const qsizetype before = log.bytes();
    log.note(QStringLiteral("abcd"));
    EXPECT_GT(log.bytes(), before);
    log.note(QStringLiteral("abcd"), QStringLiteral("abcd"));
    log.note(QStringLiteral(""), QStringLiteral("abcd"));
    const qsizetype empty = log.bytes();
    log.note(QStringLiteral("ab"), QStringLiteral(""));
    EXPECT_EQ(log.bytes(), empty + 4);
}
