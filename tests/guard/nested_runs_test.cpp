// A run that begins inside the wait of another has its own limit, and the other has its own back.
#include "guard/guard_bench.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

// In every wait of app "x" the user starts the app "own".
class NestedRuns : public testing::Test
{
protected:
    void startInWaits(const QByteArray &script)
    {
        app.write(u"config/apps/own/main.wf"_s, script);
        app.bench.waiter.onWait = [this] {
            if (std::exchange(m_isInside, true))
                return;
            app.bench.system.starts().runApp(u"own"_s, RunStart::ScriptPath::Kept);
        };
    }

    // "x" may do nothing, "own" everything.
    void run(const QStringList &lines)
    {
        app.write(u"config/apps/x/main.wf"_s, lines.join(u"\r\n"_s).toUtf8());
        app.bench.system.starts().setLimits(
            [](const QString &keyword, const QByteArray &) -> std::shared_ptr<const RunLimit> {
                if (keyword == "own"_L1)
                    return nullptr;
                auto limit = std::make_shared<GrantedLimit>();
                limit->keyword = keyword;
                return limit;
            });
        app.bench.system.starts().runApp(u"x"_s, RunStart::ScriptPath::Kept);
    }

    test::GuardBench app;

private:
    bool m_isInside = false;
};

TEST_F(NestedRuns, ofTheUsersOwnAppsAreNotLimited)
{
    startInWaits("//edition:2\nos.set_clipboard \"own\"\n");
    run({u"//edition:2"_s, u"try.start"_s, u"    os.set_clipboard \"x\""_s, u"try.failed"_s,
        u"    os.tips \"no\""_s, u"try.end"_s});
    EXPECT_TRUE(app.happened(u"clipboard set own"_s));
    EXPECT_FALSE(app.happened(u"clipboard set x"_s));
    EXPECT_TRUE(app.happened(u"tip no"_s));
}

// The lines that go on are those of the script that was loaded last.
TEST_F(NestedRuns, ofEdition1TakeTheirLimitWithTheirLines)
{
    startInWaits("os.set_clipboard \"own\"\r\nos.set_clipboard \"more\"\r\n");
    run({u"os.set_clipboard \"x\""_s, u"os.set_clipboard \"x\""_s});
    EXPECT_TRUE(app.happened(u"clipboard set more"_s));
    EXPECT_FALSE(app.happened(u"clipboard set x"_s));
}

// What a line takes from the line before is still the other script's.
TEST_F(NestedRuns, ofEdition1KeepTheLimitOfArgumentsThatTheyInherit)
{
    startInWaits("os.tips \"1\"\r\nos.set_clipboard\r\n");
    run({u"set.a \"x\""_s, u"set.b \"x\""_s});
    EXPECT_FALSE(app.happened(u"clipboard set x"_s)) << app.events().join(u'|').toStdString();
}

TEST_F(NestedRuns, areLoadedUnderNoLimit)
{
    startInWaits("//edition:2\nos.lock_screen\n");
    run({u"time.sleep \"5\""_s});
    EXPECT_TRUE(app.happened(u"session lock"_s)) << app.events().join(u'|').toStdString();
}

} // namespace
} // namespace plum
