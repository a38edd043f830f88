#include "flight/flight_recorder.h"

#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "flight/flight.h"
#include "flight/flight_page.h"
#include "platform/recording/recording_platform.h"
#include "platform/stop_signal.h"
#include "recording/recording_commands.h"
#include "recording/recording_launcher.h"
#include "script_system.h"
#include "support/printers.h"
#include "support/temporary_files.h"

#include <QImage>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

// A colour for each place, no two of them alike.
quint32 colourOf(int x, int y)
{
    return (quint32(y * 24 + x + 1) * 2654435761U) & 0xffffff;
}

class FlightRecorderTest : public testing::Test
{
protected:
    FlightRecorderTest()
    {
        scripts.state().runctx[1] = u"bao"_s;
        scripts.state().observer = &flight.recorder;
        desktop.screen().size = {200, 100};
        desktop.screen().pixels.assign(std::size_t(200) * 100, 0x202020);
    }

    void run(const QByteArray &script)
    {
        ASSERT_TRUE(scripts.starts().prepareFile(files.write(u"test.wf"_s, script)));
        try {
            scripts.starts().runAll();
        } catch (const ScriptError &failure) {
            error = failure.mistakes().front().reason;
        } catch (const RunTimeError &failure) {
            error = failure.description();
        }
    }

    const FlightLog &log() const { return flight.recorder.log(); }

    // The file of a button of many colours, which is on the screen at 70:40 with some pixels in another red.
    QString buttonWithAnotherOnTheScreen(const QList<QPoint> &changed)
    {
        QImage button(24, 10, QImage::Format_RGB32);
        for (int y = 0; y < button.height(); ++y) {
            for (int x = 0; x < button.width(); ++x) {
                button.setPixel(x, y, colourOf(x, y));
                desktop.screen().pixels[std::size_t(40 + y) * 200 + 70 + x]
                    = colourOf(x, y) ^ (changed.contains(QPoint(x, y)) ? 0xff0000 : 0);
            }
        }
        const QString path = files.write(u"button.png"_s, {});
        EXPECT_TRUE(button.save(path));
        return path;
    }

    // Everything that was done, in order.
    QStringList deeds() const
    {
        QStringList all;
        for (const FlightEntry &entry : log().entries()) {
            for (const FlightEntry::Deed &deed : entry.deeds)
                all += deed.what.toText();
        }
        return all;
    }

    recording::RecordingPlatform desktop;
    Flight flight{desktop, desktop.shell()};
    recording::RecordingWaiter waiter{desktop.log};
    recording::RecordingLauncher launcher{desktop.log};
    recording::RecordingStorePage storePage{desktop.log};
    recording::RecordingHttpClient http{desktop.log};
    recording::RecordingProgramRunner programs{desktop.log};
    recording::RecordingNotices notices{desktop.log};
    ScriptSystem scripts{{.platform = flight.platform,
        .shell = flight.shell,
        .launcher = launcher,
        .storePage = storePage,
        .executableName = u"plum"_s,
        .searches = &flight.recorder,
        .waiter = &waiter,
        .http = &http,
        .programs = &programs,
        .notices = &notices}};
    test::TemporaryFiles files;
    QString error;
};

} // namespace

TEST_F(FlightRecorderTest, KeepsLinesWithWhatTheyDid)
{
    run("//edition:2\nset.x 3\nmouse.move $\"{x}:4\"\nkeyboard.key_down shift\nmouse.move set.nowhere\n");
    EXPECT_EQ(error, u"nowhere was never set"_s);
    ASSERT_EQ(log().entries().size(), 4U);
    const FlightEntry &move = log().entries()[1];
    EXPECT_EQ(move.line.number, 3);
    EXPECT_EQ(move.line.text, u"mouse.move $\"{x}:4\""_s);
    EXPECT_EQ(move.fields, QStringList(u"3:4"_s));
    EXPECT_EQ(move.end, RunObserver::LineEnd::Done);
    EXPECT_EQ(deeds(), (QStringList{u"pointer to 3:4"_s, u"key 16 down"_s}));
    const FlightEntry &last = log().entries().back();
    EXPECT_EQ(last.end, RunObserver::LineEnd::Failed);
    EXPECT_EQ(last.reason, error);
    EXPECT_EQ(log().script(), u"test.wf"_s);
    EXPECT_EQ(log().entries().front().variables, (QList<std::pair<QString, QString>>{{u"x"_s, u"3"_s}}));
}

TEST_F(FlightRecorderTest, TakesPicturesBeforeAndAfterEachLineWhereTheyAreWanted)
{
    const auto paint
        = [this](quint32 colour) { desktop.screen().pixels.assign(std::size_t(200) * 100, colour); };
    const auto middleOf = [this](Film::Id id) {
        const ScreenTile *tile = flight.recorder.film().find(id);
        return tile ? tile->toImage().pixel(80, 60) & 0xffffff : 0U;
    };
    bool areWanted = true;
    FlightCamera camera(desktop, [] { return 0; });
    flight.recorder.setCamera(camera, [&] { return areWanted; });
    desktop.pointer().at = {100, 50};
    paint(0x111111);
    desktop.log.onAdd = [&](const QString &event) {
        if (event == "mouse 2"_L1)
            paint(0x222222);
    };
    run("//edition:2\nmouse.l_down\nmouse.l_up\nos.find_color 00FF00,0:0:200:100,,spot\n");
    ASSERT_GE(log().entries().size(), 3U);
    const FlightEntry &press = log().entries()[0];
    EXPECT_EQ(middleOf(press.before), 0x111111U);
    EXPECT_EQ(middleOf(press.after), 0x222222U);
    EXPECT_EQ(log().entries()[1].before, press.after) << "nothing has changed";
    const FlightEntry &search = log().entries()[2];
    EXPECT_TRUE(search.showsSearch);
    ASSERT_NE(flight.recorder.film().find(search.after), nullptr);
    EXPECT_EQ(flight.recorder.film().find(search.after)->toImage().size(), QSize(200, 100));
    const QString page = flightPage(log(), flight.recorder.film());
    EXPECT_TRUE(
        page.contains("<img alt=\"before\" width=\"160\" height=\"120\" src=\"data:image/png;base64,"_L1));
    EXPECT_TRUE(page.contains("<img alt=\"after\""_L1));
    areWanted = false;
    run("//edition:2\nmouse.l_down\n");
    EXPECT_TRUE(flight.recorder.film().isEmpty());
    EXPECT_FALSE(flightPage(log(), flight.recorder.film()).contains("<img"_L1));
}

TEST_F(FlightRecorderTest, BeginsAnewWithEachRun)
{
    run("//edition:2\nmouse.move 1:2\n");
    run("//edition:2\nmouse.move 3:4\n");
    EXPECT_EQ(deeds(), QStringList(u"pointer to 3:4"_s));
}

TEST_F(FlightRecorderTest, KeepsNoAnswerAndNothingThatIsMadeOfIt)
{
    run("//edition:2\ninput.text name,\"Who?\"\nset.greeting $\"Hello {name}\"\n"
        "text.replace other,set.name,\"n\",\"m\",,,no\nkeyboard.type set.other\n");
    scripts.starts().answer(1, {true, u"name"_s, u"Annabel"_s});
    EXPECT_TRUE(desktop.log.lines().contains(u"type Ammabel"_s))
        << desktop.log.lines().join(u'|').toStdString();
    const QString page = flightPage(log(), flight.recorder.film());
    EXPECT_FALSE(page.contains("Annabel"_L1)) << page.toStdString();
    EXPECT_FALSE(page.contains("Ammabel"_L1)) << page.toStdString();
    EXPECT_TRUE(page.contains("Hello "_L1 + Secrets::mark)) << page.toStdString();
    EXPECT_TRUE(deeds().contains(u"typed 7 characters"_s));
}

// The pieces of a secret are secrets, and so are the keys that it is typed with.
TEST_F(FlightRecorderTest, KeepsNoPieceOfTheClipboard)
{
    desktop.clipboard().content = u"qzx"_s;
    run("//edition:2\nrepeat.each os.get_clipboard,each,\"\"\n    keyboard.key set.each\nrepeat.end\n");
    EXPECT_EQ(error, u""_s);
    for (const FlightEntry &entry : log().entries()) {
        for (const auto &[name, value] : entry.variables)
            EXPECT_EQ(value, Secrets::mark) << name.toStdString();
        for (const QString &field : entry.fields)
            EXPECT_TRUE(field == Secrets::mark || field.isEmpty()) << field.toStdString();
    }
    EXPECT_EQ(deeds().count(u"key "_s + Secrets::mark + u" down"_s), 3) << deeds().join(u'|').toStdString();
}

TEST_F(FlightRecorderTest, KeepsEverythingWhereThatIsAskedFor)
{
    Flight all{desktop, desktop.shell()};
    all.recorder.setKeeps(FlightRecorder::Keeps::Everything);
    all.recorder.runBegins(u"x"_s);
    all.recorder.lineBegins({.number = 1});
    all.recorder.answered(u"Annabel"_s);
    all.recorder.variableSet(u"name"_s, u"Annabel"_s);
    all.platform.clipboard().setText(u"text"_s);
    all.recorder.lineEnds(RunObserver::LineEnd::Done, {});
    const FlightEntry &entry = all.recorder.log().entries().front();
    EXPECT_EQ(entry.variables.front().second, u"Annabel"_s);
    EXPECT_EQ(entry.deeds.front().what.toText(), u"clipboard set: 4 characters, text"_s);
}

TEST_F(FlightRecorderTest, KeepsTheLastDeedsOfALineThatDoesManyThings)
{
    FlightRecorder recorder;
    recorder.runBegins(u"x"_s);
    recorder.lineBegins({.number = 1});
    for (int n = 0; n < 100'000; ++n)
        recorder.deed({FlightDeed::Kind::Typed, {QString::number(n)}});
    const FlightEntry &entry = recorder.log().entries().front();
    EXPECT_EQ(entry.deeds.size(), FlightLog::mostDeeds);
    EXPECT_EQ(entry.deeds.last().what.values, QStringList(u"99999"_s));
    EXPECT_EQ(entry.moreDeeds, 100'000 - FlightLog::mostDeeds);
    EXPECT_LT(recorder.log().bytes(), 100'000);
}

// What is counted when something is noted down is taken off again when it is given up.
TEST_F(FlightRecorderTest, KeepsAsMuchOfARunThatLastsLong)
{
    FlightRecorder recorder;
    recorder.runBegins(u"x"_s);
    const QString value(500, u'v');
    const auto carryOut = [&](int lines) {
        for (int line = 0; line < lines; ++line) {
            recorder.lineBegins({.number = 1});
            recorder.fieldRead(0, value);
            recorder.fieldRead(2, value);
            recorder.fieldRead(2, value);
            recorder.variableSet(u"a"_s, value);
            recorder.variableSet(u"b"_s, value);
            recorder.seen({.what = u"f"_s});
            recorder.seen({.what = u"f"_s});
            recorder.lineEnds(RunObserver::LineEnd::Failed, u"why"_s);
        }
        return recorder.log().entries().size();
    };
    const std::size_t whenFull = carryOut(10'000);
    EXPECT_LT(whenFull, std::size_t(10'000));
    EXPECT_EQ(carryOut(50'000), whenFull);
}

TEST_F(FlightRecorderTest, SaysBetweenWhichDeedsAStopWasAskedFor)
{
    StopSignal stop;
    FlightRecorder recorder;
    recorder.setStop(stop);
    stop.raise();
    stop.lower();
    // Times are told apart to the microsecond.
    const auto pause = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
    pause();
    recorder.runBegins(u"x"_s);
    recorder.lineBegins({.number = 1});
    recorder.deed({FlightDeed::Kind::LeftDown});
    recorder.lineEnds(RunObserver::LineEnd::Done, {});
    recorder.noteOutcome(u"That stop was for an earlier run."_s);
    pause();
    recorder.lineBegins({.number = 2});
    recorder.deed({FlightDeed::Kind::RightDown});
    pause();
    stop.raise();
    pause();
    recorder.deed({FlightDeed::Kind::RightUp});
    recorder.lineEnds(RunObserver::LineEnd::Stopped, {});
    recorder.noteOutcome(u"The run was stopped."_s);
    QStringList all;
    for (const FlightEntry &entry : recorder.log().entries()) {
        for (const FlightEntry::Deed &deed : entry.deeds)
            all += u"%1 "_s.arg(entry.line.number) + deed.what.toText();
    }
    EXPECT_EQ(all,
        (QStringList{u"1 button left down"_s, u"2 button right down"_s, u"2 stop asked for"_s,
            u"2 button right up"_s}));
}

TEST_F(FlightRecorderTest, LooksForNoNearMissOnceTheRunIsStopped)
{
    StopSignal stop;
    flight.recorder.setStop(stop);
    stop.raise();
    const QString path = buttonWithAnotherOnTheScreen({QPoint(5, 3)});
    const QByteArray search = "//edition:2\nos.find_pic \"" + path.toUtf8() + "\",0:0:200:100,,p\n";
    run(search);
    EXPECT_EQ(deeds().size(), 1) << deeds().join(u'|').toStdString();
    stop.lower();
    run(search);
    ASSERT_EQ(deeds().size(), 2) << deeds().join(u'|').toStdString();
    EXPECT_TRUE(deeds().last().startsWith(u"nearest miss at 70:40: 1 of "_s));
}

TEST_F(FlightRecorderTest, TellsWhereAPictureWasNearlySeen)
{
    const QString path = buttonWithAnotherOnTheScreen({QPoint(5, 3), QPoint(6, 3), QPoint(5, 4)});
    run("//edition:2\nos.find_pic \"" + path.toUtf8() + "\",0:0:200:100,,p\n");
    EXPECT_NE(error, u""_s);
    const QString miss = deeds().value(1);
    EXPECT_TRUE(miss.startsWith(u"nearest miss at 70:40: 3 of "_s)) << deeds().join(u'|').toStdString();
    EXPECT_TRUE(miss.endsWith(u"(red 3, green 0, blue 0), in the picture at 5:3, 6:3, 5:4"_s))
        << miss.toStdString();
}

TEST_F(FlightRecorderTest, SaysWhereNothingIsLikeAPicture)
{
    QImage picture(24, 10, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, colourOf(x, y));
    }
    const QString path = files.write(u"many.png"_s, {});
    ASSERT_TRUE(picture.save(path));
    run("//edition:2\nos.find_pic \"" + path.toUtf8() + "\",0:0:200:100,,p\n");
    EXPECT_EQ(deeds().value(1), u"nothing in there is like it"_s);
}
