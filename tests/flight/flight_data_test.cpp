#include "flight/flight_data.h"

#include "flight/film.h"
#include "flight/flight_log.h"
#include "flight/flight_page.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(FlightData, IsReadFromAPageAsItWasWritten)
{
    FlightLog log;
    log.begin(u"<pre id=\"run\" hidden>{}</pre>"_s);
    const FlightEntry entry{.line = {.file = u"part.wf"_s, .number = 7, .text = u"set.a \"</pre>&lt;\""_s},
        .passedBefore = 12,
        .end = RunObserver::LineEnd::Failed,
        .reason = u"ä"_s,
        .fields = {u"a&b"_s},
        .deeds = {{5, {FlightDeed::Kind::PointerMoved, {u"3"_s, u"4"_s}}}},
        .variables = {{u"a"_s, u"</pre>"_s}},
        .seen = {{.kind = FlightEntry::Sight::Window, .what = u"Mail"_s, .window = 77},
            {.kind = FlightEntry::Sight::Colour, .what = u"00FF00"_s, .at = {9, 8}}}};
    log.add(entry);
    const auto read = flightOfPage(flightPage(log, {}).toUtf8());
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->script(), log.script());
    ASSERT_EQ(read->entries().size(), 1U);
    const FlightEntry &same = read->entries().front();
    EXPECT_EQ(same.line.file, entry.line.file);
    EXPECT_EQ(same.line.number, 7);
    EXPECT_EQ(same.line.text, entry.line.text);
    EXPECT_EQ(same.passedBefore, 12);
    EXPECT_EQ(same.end, entry.end);
    EXPECT_EQ(same.reason, entry.reason);
    EXPECT_EQ(same.fields, entry.fields);
    ASSERT_EQ(same.deeds.size(), 1);
    EXPECT_EQ(same.deeds.front().what, entry.deeds.front().what);
    EXPECT_EQ(same.variables, entry.variables);
    ASSERT_EQ(same.seen.size(), 2);
    EXPECT_EQ(same.seen[0].what, u"Mail"_s);
    EXPECT_EQ(same.seen[0].window, 77);
    EXPECT_EQ(same.seen[1].at, QPoint(9, 8));
}

TEST(FlightData, PassesOverWhatItDoesNotKnow)
{
    const auto read = flightOfPage(
        "<pre id=\"run\" hidden>{&quot;lines&quot;:[{&quot;end&quot;:99,&quot;deeds&quot;:"
        "[[&quot;danced&quot;,[]],3,[&quot;log-off&quot;,[]]],&quot;seen&quot;:[[9],4]},5]}</pre>");
    ASSERT_TRUE(read.has_value());
    ASSERT_EQ(read->entries().size(), 2U);
    const FlightEntry &line = read->entries().front();
    EXPECT_EQ(line.end, std::nullopt);
    EXPECT_TRUE(line.seen.isEmpty());
    ASSERT_EQ(line.deeds.size(), 1);
    EXPECT_EQ(line.deeds.front().what.kind, FlightDeed::Kind::LoggedOff);
}

TEST(FlightData, IsNotInEveryPage)
{
    for (const QByteArray page : {"", "<p>", "<pre id=\"run\" hidden>", "<pre id=\"run\" hidden>[1]</pre>"})
        EXPECT_FALSE(flightOfPage(page).has_value()) << page.toStdString();
}
