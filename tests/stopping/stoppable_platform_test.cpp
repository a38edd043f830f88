#include "stopping/stoppable_platform.h"

#include "flight/flight_platform.h"
#include "flight/flight_recorder.h"
#include "platform/recording/recording_platform.h"
#include "recording/recording_commands.h"
#include "stopping/stoppable_http_client.h"

#include <QBuffer>
#include <QCoreApplication>

#include <gtest/gtest.h>

#include <array>
#include <functional>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class StoppablePlatformTest : public testing::Test
{
protected:
    recording::RecordingPlatform inner;
    StopSignal stop;
    StoppablePlatform platform{inner, stop};
};

} // namespace

TEST_F(StoppablePlatformTest, PassesEventsOnUntilTheSignal)
{
    platform.keyboard().keyEvent(65, 0);
    platform.pointer().buttonEvent(Pointer::LeftDown);
    platform.pointer().moveTo({1, 2});
    EXPECT_TRUE(platform.keyboard().typeText(u"ab"));
    const QStringList before{u"key 65 0"_s, u"mouse 2"_s, u"move 1 2"_s, u"type ab"_s};
    EXPECT_EQ(inner.log.lines(), before);
    stop.raise();
    EXPECT_THROW(platform.keyboard().keyEvent(65, Keyboard::KeyUp), RunStopped);
    EXPECT_THROW(platform.pointer().buttonEvent(Pointer::LeftUp), RunStopped);
    EXPECT_THROW(platform.pointer().moveTo({3, 4}), RunStopped);
    EXPECT_THROW(platform.keyboard().typeText(u"c"), RunStopped);
    EXPECT_EQ(inner.log.lines(), before);
}

// Which waits inside of its calls.
TEST(StoppablePlatform, LetsTheKeyboardKnowTheSignalForAsLongAsItIsThere)
{
    recording::RecordingPlatform inner;
    FlightRecorder recorder;
    FlightPlatform recorded(inner, recorder);
    {
        StopSignal stop;
        StoppablePlatform platform{recorded, stop};
        platform.keyboard().keyEvent(65, 0);
        EXPECT_EQ(inner.keyboard().stop, &stop);
    }
    EXPECT_EQ(inner.keyboard().stop, nullptr);
}

TEST_F(StoppablePlatformTest, LeavesATextBetweenItsCharacters)
{
    int typed = 0;
    const auto stopBeforeTheThird = [&] {
        if (++typed == 2)
            stop.raise();
    };
    EXPECT_THROW(platform.keyboard().typeText(u"abcdef", stopBeforeTheThird), RunStopped);
    EXPECT_EQ(inner.log.lines(), QStringList(u"type ab"_s));
}

TEST_F(StoppablePlatformTest, LetsKeysGoAlsoAfterTheSignal)
{
    stop.raise();
    platform.pointer().releaseAll();
    platform.keyboard().releaseAll();
    EXPECT_EQ(inner.log.lines(), (QStringList{u"mouse release all"_s, u"keyboard release all"_s}));
}

TEST_F(StoppablePlatformTest, LeavesAWaitAtTheSignal)
{
    const auto timer = platform.timers().create(u"a"_s).handle;
    inner.timers().pumps = 3;
    EXPECT_FALSE(platform.timers().waitOrPump(timer));
    inner.timers().onPump = [this] { stop.raise(); };
    EXPECT_THROW(platform.timers().waitOrPump(timer), RunStopped);
}

TEST_F(StoppablePlatformTest, GivesRequestsUp)
{
    class Waiting final : public HttpClient
    {
    public:
        QString unavailable() override { return {}; }
        HttpReply get(const QString &) override { return wait(); }
        HttpReply request(const HttpRequest &) override { return wait(); }
        HttpReply post(const QString &, const QByteArray &, QIODevice &) override { return wait(); }
        HttpReply wait() const
        {
            while (!isGivenUp)
                QCoreApplication::processEvents();
            return {};
        }
        void giveUp() override { isGivenUp = true; }
        bool isGivenUp = false;
    };
    Waiting waiting;
    StoppableHttpClient client(waiting, stop);
    stop.raise();
    EXPECT_THROW(client.get(u"http://a"_s), RunStopped);
    EXPECT_FALSE(waiting.isGivenUp) << "none was made";
    QBuffer file;
    const std::array<std::function<void()>, 3> requests{[&] { client.get(u"http://a"_s); },
        [&] { client.request({}); }, [&] { client.post(u"http://a"_s, {}, file); }};
    for (const auto &request : requests) {
        stop.lower();
        waiting.isGivenUp = false;
        QMetaObject::invokeMethod(
            &stop, [this] { stop.raise(); }, Qt::QueuedConnection);
        EXPECT_THROW(request(), RunStopped);
    }
}

TEST_F(StoppablePlatformTest, IsNotToldOfASignalThatWasTakenBack)
{
    int heard = 0;
    QObject::connect(&stop, &StopSignal::raised, &stop, [&] { ++heard; });
    stop.raise();
    stop.lower();
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, 0);
    stop.raise();
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, 1);
}

TEST_F(StoppablePlatformTest, RemembersWhichKeysScriptsPressed)
{
    EXPECT_FALSE(stop.ownKeys().isRecent('S'));
    platform.keyboard().keyEvent('S', 0);
    platform.keyboard().typeText(u"q");
    EXPECT_TRUE(stop.ownKeys().isRecent('S'));
    EXPECT_TRUE(stop.ownKeys().isRecent('Q'));
    EXPECT_FALSE(stop.ownKeys().isRecent('X'));
}
