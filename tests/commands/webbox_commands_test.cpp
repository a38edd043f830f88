#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::ScriptBench;

namespace {

QStringList started(const QString &commandLine)
{
    return {u"helper C:\\plum\\config\\module\\net\\browser\\browser.exe|"_s + commandLine + u"|1"_s};
}

} // namespace

TEST(Webbox, HtmlHandsThePageOver)
{
    ScriptBench bench;
    EXPECT_EQ(
        bench.eventsOf(u"webbox.Html \"<p>x</p>\",\"y\""_s), started(u"_tarnwick_html_|||<p>x</p>|||y"_s));
}

TEST(Webbox, UrlHandsTheAddressOver)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"webbox.URL \"http://h/\",\"Title\""_s),
        started(u"_tarnwick_url_|||http://h/|||Title"_s));
}

TEST(Webbox, AMissingSecondFieldIsEmpty)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"webbox.url \"http://h/\""_s), started(u"_tarnwick_url_|||http://h/|||"_s));
    bench.state.vardict.SetVar(u"page"_s, u"http://v/"_s);
    EXPECT_EQ(bench.eventsOf(u"webbox.url set.page"_s).size(), 1);
}

TEST(Webbox, AQuotedTextMayHoldCommas)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"webbox.html \"a,b\""_s), started(u"_tarnwick_html_|||a,b|||"_s));
}

TEST(Webbox, WithoutArgumentsBothFieldsAreEmpty)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"webbox.html "_s), started(u"_tarnwick_html_||||||"_s));
}

TEST(Webbox, OtherWordsDoNothing)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"webbox.open \"x\""_s), QStringList());
}

TEST(Webbox, AMissingHelperGoesUnnoticed)
{
    ScriptBench bench;
    static_cast<plum::recording::RecordingShell &>(bench.platform.shell()).succeeds = false;
    bench.runKeepingVariables({u"webbox.url \"http://h/\""_s, u"set.after \"1\""_s});
    EXPECT_EQ(bench.variable(u"after"_s), u"1"_s);
}
