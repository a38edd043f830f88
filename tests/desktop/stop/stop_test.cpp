// Runs of the real program that a hand stops, in the window of another X server.

#include "desktop/stop/watched_desktop.h"
#include "desktop/support/conditions.h"
#include "flight/flight_data.h"
#include "flight/flight_log.h"
#include "support/dice.h"

#include <QImage>
#include <QTcpServer>
#include <QThread>

#include <algorithm>
#include <array>
#include <csignal>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int stopped = 130;

// Whether it is an event of the hand's kind. A click that is sent as a whole counts once, by its press.
bool isEvent(const FlightDeed &deed)
{
    using enum FlightDeed::Kind;
    constexpr std::array events{KeyDown, KeyUp, PointerMoved, LeftDown, RightDown};
    return std::ranges::find(events, deed.kind) != events.end();
}

// How many events a recorded run sent after its stop; nothing where its page says of no stop.
std::optional<int> eventsAfterStop(const QString &page)
{
    QFile file(page);
    const auto log = file.open(QIODevice::ReadOnly) ? flightOfPage(file.readAll()) : std::nullopt;
    if (!log)
        return {};
    std::optional<int> events;
    for (const FlightEntry &entry : log->entries()) {
        for (const FlightEntry::Deed &deed : entry.deeds) {
            if (deed.what.kind == FlightDeed::Kind::StopAsked)
                events = 0;
            else if (events && isEvent(deed.what))
                ++*events;
        }
    }
    return events;
}

// A number of the environment, or another one.
int numberOf(const char *variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

class StopTest : public WatchedDesktop
{
protected:
    // Holds Esc until the run has ended, and gives its status.
    int holdEscape()
    {
        m_pressed = ScriptEvents::Clock::now();
        hand->keyDown(u"Escape"_s);
        const int ended = status();
        m_ended = ScriptEvents::Clock::now();
        hand->keyUp(u"Escape"_s);
        return ended;
    }

    // Milliseconds from the moment at which Esc had been held for long enough.
    double sinceStop(ScriptEvents::Clock::time_point at) const
    {
        return std::chrono::duration<double, std::milli>(at - m_pressed - 700ms).count();
    }

    ScriptEvents::Clock::time_point m_pressed;
    ScriptEvents::Clock::time_point m_ended;
};

struct Kind
{
    const char *name;
    QByteArray script;
};

double percentile(std::vector<double> values, double part)
{
    if (values.empty())
        return 0;
    std::ranges::sort(values);
    return values[std::min(values.size() - 1, static_cast<std::size_t>(part * double(values.size())))];
}

QByteArray endlessly(const QByteArray &lines)
{
    return "//edition:2\npace.set 0\nrepeat.while 1,is,1\n" + lines + "repeat.end\n";
}

} // namespace

TEST_F(StopTest, escapeHeldEndsEveryKindOfRunAndReleasesEverything)
{
    // A picture that is nowhere on the screen, but nearly everywhere.
    QImage picture(60, 40, QImage::Format_RGB32);
    picture.fill(Qt::black);
    picture.setPixel(59, 39, 0x123456);
    const QString pictureFile = folder() + u"/picture.png"_s;
    ASSERT_TRUE(picture.save(pictureFile));
    QFile endless(folder() + u"/endless.js"_s);
    ASSERT_TRUE(endless.open(QIODevice::WriteOnly));
    endless.write("function f() { for (;;); }");
    endless.close();
    QTcpServer silent; // takes connections, by the kernel, and never says a word
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    const QByteArray address = "http://127.0.0.1:" + QByteArray::number(silent.serverPort()) + "/";
    const QByteArray path = folder().toUtf8();

    const std::vector<Kind> kinds{
        {"a wait", "time.sleep \"600000\"\r\n"},
        {"endless clicks", "mouse.while_click \"\",\"click\",\"5\"\r\n"},
        {"endless double clicks", "mouse.while_click \"\",\"d_click\",\"1\"\r\n"},
        {"taps", endlessly("keyboard.key a,b\n")},
        {"a held key and button",
            "keyboard.key_down \"shift\"\r\nkeyboard.key_down \"a\"\r\nmouse.l_down\r\n"
            "time.sleep \"600000\"\r\n"},
        {"motions without a pause", endlessly("mouse.move 100:100\nmouse.move 200:200\n")},
        {"typing", endlessly("keyboard.type \"The quick brown fox jumps over the lazy dog\"\n")},
        {"counting", endlessly("set.a 1\n")},
        {"searching", endlessly("os.find_pic \"" + path + "/picture.png\",0:0:900:700,,p\n")},
        {"a fetch", "net.get \"" + address + "\",\"a\"\r\n"},
        {"JavaScript", "file.call_js \"" + path + "/endless.js\",\"f\",\"\",\"x\"\r\n"},
        {"a program", endlessly("os.run \"sleep\",600,out\n")},
    };
    const int stops = numberOf("PLUM_STOPS", 24);
    recording::Dice dice(20);
    std::vector<double> toLastEvent;
    std::vector<double> toEnd;
    int mostLater = 0;
    int mostSent = 0; // after the program had decided on the stop
    const QString page = folder() + u"/page.html"_s;
    for (int stop = 0; stop < stops; ++stop) {
        const Kind &kind = kinds[static_cast<std::size_t>(stop) % kinds.size()];
        SCOPED_TRACE(testing::Message() << "stop " << stop << " of " << kind.name);
        scriptEvents->clear();
        // Every second pass through the kinds is recorded.
        const bool isRecorded = static_cast<std::size_t>(stop) / kinds.size() % 2 == 0;
        QFile::remove(page);
        startScript(kind.script, isRecorded ? QStringList{u"run"_s, u"--trace"_s, page} : QStringList());
        if (HasFatalFailure())
            return;
        QThread::msleep(static_cast<unsigned long>(dice.below(600)));
        ASSERT_EQ(holdEscape(), stopped) << program().readAllStandardError().constData();
        EXPECT_TRUE(eventually([this] { return !isAnythingDown(); }));
        if (isRecorded) {
            const std::optional<int> sent = eventsAfterStop(page);
            ASSERT_TRUE(sent.has_value()) << "the page says of no stop";
            EXPECT_LE(*sent, 1);
            mostSent = std::max(mostSent, *sent);
        } else {
            toEnd.push_back(sinceStop(m_ended)); // without the time that a page takes
        }
        double last = 0;
        int later = 0;
        for (const ScriptEvents::Event &event : scriptEvents->all()) {
            if (!event.isRelease && sinceStop(event.at) > 0) {
                last = std::max(last, sinceStop(event.at));
                ++later;
            }
        }
        if (last > 50)
            std::printf("stop %d, of %s: %d events, the last after %.1f ms\n", stop, kind.name, later, last);
        toLastEvent.push_back(last);
        mostLater = std::max(mostLater, later);
    }
    std::printf("%d stops: last event %.1f ms after the stop in the middle, %.1f at 99 %%, %.1f at most (%d "
                "events at most, %d of them sent after the stop was decided); end %.1f, %.1f, %.1f\n",
        stops, percentile(toLastEvent, 0.5), percentile(toLastEvent, 0.99), percentile(toLastEvent, 1),
        mostLater, mostSent, percentile(toEnd, 0.5), percentile(toEnd, 0.99), percentile(toEnd, 1));
}

TEST_F(StopTest, escapeThatIsTappedStopsNothing)
{
    startScript("//edition:2\nrepeat.times 150\nkeyboard.key a\nrepeat.end\n");
    for (int tap = 0; tap < 20; ++tap) {
        hand->key(u"Escape"_s);
        QThread::msleep(40);
    }
    EXPECT_EQ(status(), 0);
}

TEST_F(StopTest, whatScriptsPressNeverStopsThem)
{
    writeOptions("[stop]\r\nhotkey=Ctrl+Alt+S\r\n");
    const int events = numberOf("PLUM_SCRIPT_EVENTS", 60'000);
    // Esc stays down all the time, and the hotkey's keys are among what is pressed.
    constexpr int eventsOfAPass = 12;
    const QByteArray passes = QByteArray::number(events / eventsOfAPass);
    startScript("//edition:2\npace.set 0\nkeyboard.key_down esc\nrepeat.times " + passes
        + "\nkeyboard.hotkey ctrl,alt,s\nmouse.move 100:100\nkeyboard.key_down a\nkeyboard.key_up "
          "a\nmouse.move "
          "200:200\nkeyboard.key_down esc\nmouse.move 300:300\nrepeat.end\ntime.sleep 900\nkeyboard.key_up "
          "esc\n");
    EXPECT_EQ(status(), 0) << program().readAllStandardError().constData();
}

TEST_F(StopTest, theHotkeyStopsFromTheHandAndFromAProgramThatTypesForSomebody)
{
    writeOptions("[stop]\r\nhotkey=ctrl+Alt+s\r\n");
    for (const bool isHand : {true, false}) {
        startScript("time.sleep \"600000\"\r\n");
        Hands other(innerDisplay());
        // Nobody looks before the run has gone on for a moment.
        EXPECT_TRUE(eventually([&] {
            (isHand ? *hand : other).key(u"ctrl+alt+s"_s);
            constexpr int untilAgain = 300; // milliseconds
            return program().waitForFinished(untilAgain) || program().state() == QProcess::NotRunning;
        }));
        EXPECT_EQ(program().exitCode(), stopped) << isHand;
    }
}

TEST_F(StopTest, ctrlCInTheTerminalStops)
{
    startScript("keyboard.key_down \"shift\"\r\ntime.sleep \"600000\"\r\n");
    ASSERT_TRUE(eventually([this] { return isAnythingDown(); }));
    ::kill(static_cast<pid_t>(program().processId()), SIGINT);
    EXPECT_EQ(status(), stopped);
    EXPECT_TRUE(eventually([this] { return !isAnythingDown(); }));
}

TEST_F(StopTest, runsOfPlumkitAreStopped)
{
    startScript("mouse.while_click \"\",\"click\",\"5\"\r\n", {u"run"_s});
    EXPECT_EQ(holdEscape(), stopped);
    EXPECT_TRUE(eventually([this] { return !isAnythingDown(); }));
}

} // namespace plum
