// Runs that let the user's hand work, in the window of another X server.

#include "desktop/stop/watched_desktop.h"
#include "desktop/support/conditions.h"

#include <QDeadlineTimer>
#include <QThread>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto rest = 1500ms;

class YieldingTest : public WatchedDesktop
{
protected:
    void startTapping()
    {
        startScript(
            "//edition:2\npace.set 0\nrepeat.while 1,is,1\nkeyboard.key a\ntime.sleep 5\nrepeat.end\n");
    }

    // Lets the hand work until the run has been silent for a while. False when it never is.
    template <typename Work> bool fallsSilent(Work work)
    {
        constexpr auto silence = 600ms;
        auto since = ScriptEvents::Clock::now();
        for (QDeadlineTimer patience(60'000); !patience.hasExpired();) {
            m_lastWork = ScriptEvents::Clock::now();
            work();
            QThread::msleep(20);
            if (!scriptEvents->all().empty()) {
                scriptEvents->clear();
                since = ScriptEvents::Clock::now();
            }
            if (ScriptEvents::Clock::now() - since > silence)
                return true;
        }
        return false;
    }

    // Waits for the run to go on, and says how long after the hand's last work that was.
    std::chrono::milliseconds silenceAfterWork()
    {
        EXPECT_TRUE(eventually([this] { return !scriptEvents->all().empty(); }));
        const std::vector<ScriptEvents::Event> events = scriptEvents->all();
        return events.empty()
            ? 0ms
            : std::chrono::duration_cast<std::chrono::milliseconds>(events.front().at - m_lastWork);
    }

private:
    ScriptEvents::Clock::time_point m_lastWork;
};

} // namespace

TEST_F(YieldingTest, ARunWaitsWhileTheHandMovesTheMouseOrTypes)
{
    writeOptions("[stop]\r\nyield=on\r\n");
    startTapping();
    int step = 0;
    const auto moves = [&] { hand->moveTo({400 + ++step % 50, 300}); };
    const auto types = [&] { hand->key(u"b"_s); };
    ASSERT_TRUE(fallsSilent(moves));
    EXPECT_GE(silenceAfterWork(), rest);
    ASSERT_TRUE(fallsSilent(types));
    EXPECT_GE(silenceAfterWork(), rest);
}

TEST_F(YieldingTest, ARunThatWaitsForTheHandIsStoppedAsEver)
{
    writeOptions("[stop]\r\nyield=on\r\n");
    startTapping();
    int step = 0;
    ASSERT_TRUE(fallsSilent([&] { hand->moveTo({400 + ++step % 50, 300}); }));
    hand->keyDown(u"Escape"_s);
    EXPECT_EQ(status(), 130);
    hand->keyUp(u"Escape"_s);
    EXPECT_TRUE(eventually([this] { return !isAnythingDown(); }));
}

} // namespace plum
