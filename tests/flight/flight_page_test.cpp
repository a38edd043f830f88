#include "flight/flight_page.h"

#include "flight/film.h"
#include "flight/flight_log.h"
#include "support/printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(FlightPage, ShowsLinesAndCarriesNothingOut)
{
    FlightLog log;
    log.begin(u"<img src=x>%2"_s);
    log.add({.line = {.number = 7, .text = u"keyboard.type \"<script>alert(1)</script>\""_s},
        .passedBefore = 12,
        .end = RunObserver::LineEnd::Failed,
        .reason = u"no <b>window</b>"_s,
        .fields = {u"a&b"_s},
        .deeds = {{1'500'000, {FlightDeed::Kind::Typed, {u"3"_s}}}},
        .variables = {{u"name"_s, u"<i>"_s}}});
    log.setOutcome(u"stopped \"%1\""_s);
    const QString page = flightPage(log, {});
    for (const char *shown : {"&lt;img src=x&gt;%2", "&lt;script&gt;", "no &lt;b&gt;window&lt;/b&gt;",
             "a&amp;b", "1.500</span> typed 3 characters", "name = <code>&lt;i&gt;", "stopped &quot;%1&quot;",
             "12 lines that only compute", "<td>7</td>", "<strong>failed</strong>"})
        EXPECT_TRUE(page.contains(QLatin1StringView(shown))) << shown << "\n" << page.toStdString();
    for (const char *active : {"<script", "<img", "http:", "https:", "url(", "<link", "<iframe"})
        EXPECT_FALSE(page.contains(QLatin1StringView(active))) << active;
    EXPECT_TRUE(page.contains("default-src 'none'"_L1));
}

TEST(FlightPage, SaysThatNothingHasBeenCarriedOut)
{
    EXPECT_TRUE(flightPage({}, {}).contains("No line has been carried out."_L1));
}

TEST(FlightPage, IsWrittenIntoAFolderThatIsNotThereYet)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"new/page.html"_s);
    ASSERT_TRUE(writeFlightPage(path, u"ä"_s));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("ä"));
    EXPECT_FALSE(writeFlightPage(folder.path(), u"a"_s));
}
