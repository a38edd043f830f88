// Scripts of every kind that are stopped: what still goes out after that is one event at most.

#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "platform/recording/recording_platform.h"
#include "platform/stop_signal.h"
#include "recording/recording_commands.h"
#include "recording/recording_launcher.h"
#include "script_system.h"
#include "support/printers.h"
#include "support/temporary_files.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

struct Kind
{
    const char *name;
    QByteArray script; // goes on for ever
};

QByteArray endlessly(const QByteArray &lines)
{
    return "//edition:2\npace.set 0\nrepeat.while 1,is,1\n" + lines + "repeat.end\n";
}

std::vector<Kind> kinds()
{
    return {{"waits", endlessly("time.sleep 600000\n")},
        {"endless clicks", "mouse.while_click \"\",\"click\",\"5\"\r\n"},
        {"endless double clicks", "mouse.while_click \"\",\"d_click\",\"1\"\r\n"},
        {"taps", endlessly("keyboard.key a,b\nkeyboard.hotkey ctrl,c\n")},
        {"held keys and buttons",
            endlessly("keyboard.key_down shift\nkeyboard.key_down a\nmouse.l_down\nmouse.l_up\n"
                      "keyboard.key_up a\nkeyboard.key_up shift\n")},
        {"motions", endlessly("mouse.move 100:100\nmouse.drag 1:1,2:2\n")},
        {"typing", endlessly("keyboard.type \"The quick brown fox jumps over the lazy dog\"\n")},
        {"counting", endlessly("set.a 1\n")},
        {"searching", endlessly("try.start\nos.find_pic \"PICTURE\",0:0:60:60,,p\ntry.failed\ntry.end\n")},
        {"fetches", endlessly("net.get \"http://127.0.0.1/\",a\n")},
        {"JavaScript", endlessly("file.call_js \"SCRIPT\",\"f\",,x\n")},
        {"programs", endlessly("os.run \"some\",1000,out\n")},
        // These send nothing that a port of the hand's looks at.
        {"windows", endlessly("window.set move_window,7,1:2\n")},
        {"clipboard texts", endlessly("os.set_clipboard \"a\"\n")},
        {"starts", endlessly("file.call \"some\"\n")}};
}

// One run on the recording backend, in which waits take no time.
class StoppedScript
{
public:
    explicit StoppedScript(const Kind &kind)
    {
        QByteArray script = kind.script;
        const QString picture = m_files.write(u"picture.png"_s, {});
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(0x123456);
        image.save(picture);
        script.replace("PICTURE", picture.toUtf8());
        script.replace("SCRIPT", m_files.write(u"some.js"_s, "function f() {}").toUtf8());
        m_path = m_files.write(u"test.wf"_s, script);
        m_desktop.screen().size = {60, 60};
        m_desktop.screen().pixels.assign(std::size_t(60) * 60, 0);
        m_desktop.windows().rectangles[7] = QRect(0, 0, 10, 10);
        m_http.answer.status = 200;
        m_programs.result.outcome = ProgramResult::Outcome::Ended;
        m_scripts.state().runctx[1] = u"bao"_s;
        m_desktop.log.onAdd = [this](const QString &line) {
            if (isEvent(line))
                note();
        };
        m_desktop.timers().onPump = [this] { passTime(); };
    }

    // Whether the run was left by the stop.
    bool run()
    {
        EXPECT_TRUE(m_scripts.starts().prepareFile(m_path));
        try {
            m_scripts.starts().runAll();
        } catch (const RunStopped &) {
            return true;
        } catch (const ScriptError &error) {
            ADD_FAILURE() << error.toText().toStdString();
        } catch (const RunTimeError &error) {
            ADD_FAILURE() << error.description().toStdString();
        }
        return false;
    }

    StopSignal stop;
    int stopsWithin = 0; // the event of that number raises the signal
    std::function<void()> inWait;
    int after = 0; // events while the signal was raised

private:
    // What belongs to a command around an event is none of its own.
    static bool isEvent(const QString &line)
    {
        constexpr std::array others{"timer "_L1, "browser "_L1, "store "_L1, "clipboard clear"_L1};
        return std::ranges::none_of(others, [&](QLatin1StringView other) { return line.startsWith(other); });
    }

    void note()
    {
        // The log is for people; a long run needs none.
        m_desktop.log.clear();
        if (stop.isRaised())
            ++after;
        if (++m_events == stopsWithin)
            stop.raise();
    }

    void passTime()
    {
        m_desktop.log.clear();
        if (inWait)
            inWait();
    }

    test::TemporaryFiles m_files;
    QString m_path;
    int m_events = 0;
    recording::RecordingPlatform m_desktop;
    recording::RecordingLauncher m_launcher{m_desktop.log};
    recording::RecordingStorePage m_storePage{m_desktop.log};
    recording::RecordingHttpClient m_http{m_desktop.log};
    recording::RecordingProgramRunner m_programs{m_desktop.log};
    recording::RecordingNotices m_notices{m_desktop.log};
    ScriptSystem m_scripts{{.platform = m_desktop,
        .shell = m_desktop.shell(),
        .launcher = m_launcher,
        .storePage = m_storePage,
        .executableName = u"plum"_s,
        .stop = &stop,
        .http = &m_http,
        .programs = &m_programs,
        .notices = &m_notices}};
};

// What sends nothing is stopped in its waits and between its lines.
bool sendsEvents(const Kind &kind)
{
    constexpr std::array silent{"waits", "counting", "searching"};
    return std::ranges::none_of(silent, [&](const char *name) { return qstrcmp(name, kind.name) == 0; });
}

} // namespace

TEST(StoppedScripts, SendNothingAfterAStopThatComesWithAnEvent)
{
    for (const Kind &kind : kinds()) {
        for (int event = 1; sendsEvents(kind) && event <= 20; ++event) {
            SCOPED_TRACE(testing::Message() << kind.name << ", event " << event);
            StoppedScript script(kind);
            script.stopsWithin = event;
            ASSERT_TRUE(script.run());
            EXPECT_EQ(script.after, 0);
        }
    }
}

TEST(StoppedScripts, SendOneEventAtMostAfterAStopThatComesAtAnyTime)
{
    for (const Kind &kind : kinds()) {
        for (int round = 0; round < 3; ++round) {
            SCOPED_TRACE(testing::Message() << kind.name << ", round " << round);
            StoppedScript script(kind);
            std::thread hand([&script, round] {
                std::this_thread::sleep_for(std::chrono::milliseconds(1 + round));
                script.stop.raise();
            });
            const bool isStopped = script.run();
            hand.join();
            ASSERT_TRUE(isStopped);
            EXPECT_LE(script.after, 1);
        }
    }
}

TEST(StoppedScripts, SendNothingAfterAStopInAWait)
{
    for (const char *line :
        {"time.sleep 600000\n", "mouse.click\n", "keyboard.key a\n", "mouse.drag 1:1,2:2\n"}) {
        for (int wait = 1; wait <= 8; ++wait) {
            SCOPED_TRACE(testing::Message() << line << "wait " << wait);
            StoppedScript script({line, endlessly(line)});
            int waits = 0;
            script.inWait = [&] {
                if (++waits == wait)
                    script.stop.raise();
            };
            ASSERT_TRUE(script.run());
            EXPECT_EQ(script.after, 0);
        }
    }
}
