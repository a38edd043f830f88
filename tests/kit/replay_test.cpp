#include "flight/film.h"
#include "flight/flight_data.h"
#include "flight/flight_log.h"
#include "flight/flight_page.h"
#include "flight/secrets.h"
#include "kit/dry_run.h"
#include "kit_process.h"
#include "platform/recording/recording_platform.h"
#include "support/temporary_files.h"

#include <QImage>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using namespace plum::kit;
using plum::test::KitRun;
using plum::test::runKit;
using plum::test::TemporaryFiles;

namespace {

class Replays : public testing::Test
{
protected:
    // Runs a script; its page.
    QString record(const QByteArray &script)
    {
        const QString page = files.folder() + u"/page.html"_s;
        const KitRun recorded = runKit({u"run"_s, u"--trace"_s, page, files.write(u"before.wf"_s, script)});
        EXPECT_EQ(recorded.status, 0) << recorded.errors.toStdString();
        return page;
    }

    KitRun dry(const QString &page, const QByteArray &script)
    {
        return runKit({u"dry"_s, u"--replay"_s, page, files.write(u"now.wf"_s, script)});
    }

    // Runs a script, and lays another one beside it.
    KitRun replay(const QByteArray &before, const QByteArray &now) { return dry(record(before), now); }

    // The same beside a record that is made up.
    QStringList replay(const FlightLog &record, const QByteArray &now)
    {
        const QTemporaryDir scratch;
        recording::RecordingPaths paths;
        paths.folder = files.folder();
        QStringList printed;
        DryRun run(
            {paths, scratch.path(), record}, [&](const QString &line) { printed += line; },
            [&](const QString &line) { printed += u"error: "_s + line; });
        run.desktop().screen().size = {200, 150};
        DryOptions options;
        options.file = files.write(u"now.wf"_s, now);
        run.run(options);
        return printed;
    }

    TemporaryFiles files;
};

} // namespace

TEST_F(Replays, MarkNothingWhereNothingWasChanged)
{
    const QByteArray script = "//edition:2\nset.n 2\nrepeat.times set.n\nmouse.move 3:4\nrepeat.end\n"
                              "text.upper \"a\",big\nkeyboard.hotkey ctrl,c\n";
    const KitRun ended = replay(script, script);
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_FALSE(ended.output.isEmpty());
    for (const QString &line : ended.output.split(u'\n', Qt::SkipEmptyParts))
        EXPECT_TRUE(line.startsWith(u"  "_s)) << line.toStdString();
}

TEST_F(Replays, MarkWhatAnEditHasChanged)
{
    const KitRun ended = replay("//edition:2\nset.x 3\nmouse.move $\"{x}:4\"\nmouse.l_down\nmouse.l_up\n",
        "//edition:2\nset.x 5\nmouse.move $\"{x}:4\"\nmouse.l_up\nmouse.r_down\n");
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.output,
        u"- 2: set.x 3\n    was: 3; x = 3\n+ 2: set.x 5\n    now: 5; x = 5\n"
        "~ 3: mouse.move $\"{x}:4\"\n    was: 3:4; pointer to 3:4\n    now: 5:4; pointer to 5:4\n"
        "- 4: mouse.l_down\n    was: button left down\n"
        "  4: mouse.l_up\n"
        "+ 5: mouse.r_down\n    now: button right down\n"_s);
}

// What a page says is in the language of its session.
TEST_F(Replays, MarkNothingWhereTheRecordIsInAnotherLanguage)
{
    const QByteArray script = "//edition:2\nmouse.move 3:4\nmouse.l_down\nkeyboard.hotkey ctrl,c\n"
                              "try.start\nset.a set.nowhere\ntry.failed\ntry.end\n";
    const QByteArray language = qgetenv("LC_ALL");
    qputenv("LC_ALL", "zh_CN.UTF-8");
    const QString page = record(script);
    qputenv("LC_ALL", language);
    QFile file(page);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(QString::fromUtf8(file.readAll()).contains(u"指针移到 3:4"_s))
        << "the test needs a page in Chinese";
    const KitRun ended = dry(page, script);
    EXPECT_TRUE(ended.output.contains("  2: mouse.move 3:4\n"_L1)) << ended.errors.toStdString();
    for (const QString &line : ended.output.split(u'\n', Qt::SkipEmptyParts))
        EXPECT_TRUE(line.startsWith(u"  "_s)) << line.toStdString();
}

TEST_F(Replays, SeeWhatWasSeenThen)
{
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(0x123456);
    const QString file = files.folder() + u"/button.png"_s;
    ASSERT_TRUE(picture.save(file));
    const QString search = u"os.find_pic \"%1\",0:0:200:150,,spot"_s.arg(file);
    FlightLog record;
    record.begin(u"x"_s);
    using Sight = FlightEntry::Sight;
    record.add({.line = {.number = 2, .text = search},
        .end = RunObserver::LineEnd::Done,
        .seen = {{.kind = Sight::Picture, .what = QString(file).replace(u'/', u'\\'), .at = {70, 80}}}});
    record.add({.line = {.number = 3, .text = u"os.find_color 00FF00,0:0:200:150,,c"_s},
        .end = RunObserver::LineEnd::Done,
        .seen = {{.kind = Sight::Colour, .what = u"00FF00"_s, .at = {9, 8}}}});
    record.add({.line = {.number = 4, .text = u"window.find \"Mail\",w"_s},
        .end = RunObserver::LineEnd::Done,
        .seen = {{.kind = Sight::Window, .what = u"Mail"_s, .window = 77}}});
    record.add({.line = {.number = 5, .text = u"input.text who,\"Who?\""_s},
        .end = RunObserver::LineEnd::Rests,
        .variables = {{u"who"_s, u"Ann"_s}}});
    // What stands in a page is what was recorded.
    const auto read = flightOfPage(flightPage(record, {}).toUtf8());
    ASSERT_TRUE(read.has_value());
    const QString printed = replay(*read,
        "//edition:2\n" + search.toUtf8()
            + "\nos.find_color 00FF00,0:0:200:150,,c\nwait.window \"Mail\",10,w\ninput.text who,\"Who?\"\n"
              "set.all $\"{spot} {c} {w} {who}\"\nos.find_color FF0000,0:0:200:150,,d\n")
                                .join(u'\n');
    EXPECT_TRUE(printed.contains("all = "_L1)) << printed.toStdString();
    EXPECT_TRUE(printed.contains("70:80 9:8 77 Ann"_L1)) << printed.toStdString();
    EXPECT_TRUE(printed.contains("error: "_L1)) << "that colour was not seen then";
}

TEST_F(Replays, TakeForTheSameWhatARecordLeavesOut)
{
    FlightLog record;
    record.begin(u"x"_s);
    record.add({.line = {.number = 2, .text = u"set.a \"secret\""_s},
        .end = RunObserver::LineEnd::Done,
        .fields = {Secrets::mark},
        .variables = {{u"a"_s, Secrets::mark}}});
    EXPECT_EQ(replay(record, "//edition:2\nset.a \"secret\"\n"), QStringList(u"  2: set.a \"secret\""_s));
}

// Its mistakes were found before the run.
TEST_F(Replays, StandBesideARunThatCarriedOutNoLine)
{
    const QString page = files.folder() + u"/page.html"_s;
    EXPECT_EQ(runKit({u"run"_s, u"--trace"_s, page, files.write(u"before.wf"_s, "//edition:2\nmouse.fly\n")})
                  .status,
        1);
    const KitRun ended = dry(page, "//edition:2\nmouse.move 3:4\n");
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.output, u"+ 2: mouse.move 3:4\n    now: 3:4; pointer to 3:4\n"_s);
}

TEST_F(Replays, PassOverWhenAStopWasAskedFor)
{
    FlightLog record;
    record.begin(u"x"_s);
    record.add({.line = {.number = 2, .text = u"mouse.move 3:4"_s},
        .end = RunObserver::LineEnd::Done,
        .fields = {u"3:4"_s},
        .deeds
        = {{1, {FlightDeed::Kind::PointerMoved, {u"3"_s, u"4"_s}}}, {2, {FlightDeed::Kind::StopAsked}}}});
    EXPECT_EQ(replay(record, "//edition:2\nmouse.move 3:4\n"), QStringList(u"  2: mouse.move 3:4"_s));
}

TEST_F(Replays, RefuseWhatIsNoPageOfARun)
{
    const QString script = files.write(u"some.wf"_s, "//edition:2\n");
    for (const QByteArray &page : {QByteArray("<p>"), QByteArray("<pre id=\"run\" hidden>"),
             QByteArray("<pre id=\"run\" hidden>[1]</pre>")}) {
        EXPECT_EQ(runKit({u"dry"_s, u"--replay"_s, files.write(u"page.html"_s, page), script}).status, 2)
            << page.toStdString();
    }
    EXPECT_EQ(runKit({u"dry"_s, u"--replay"_s, u"/there/is/no/page"_s, script}).status, 2);
}

TEST_F(Replays, AskServersOnlyWhereThatIsAllowed)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const QString script = files.write(u"some.wf"_s,
        "//edition:2\nnet.get \"http://127.0.0.1:" + QByteArray::number(server.serverPort())
            + "/\",page\nos.tips set.page\n");
    const KitRun without = runKit({u"dry"_s, script});
    EXPECT_EQ(without.status, 0) << without.errors.toStdString();
    EXPECT_FALSE(server.waitForNewConnection(0));
    const KitRun with = runKit({u"dry"_s, u"--net"_s, script}, [&](QProcess &) {
        ASSERT_TRUE(server.waitForNewConnection(60'000));
        QTcpSocket *client = server.nextPendingConnection();
        ASSERT_TRUE(client->waitForReadyRead(60'000));
        client->write("HTTP/1.1 200 OK\r\nContent-Length: 5\r\nConnection: close\r\n\r\nhello");
        client->waitForBytesWritten(60'000);
        client->disconnectFromHost();
    });
    EXPECT_EQ(with.status, 0) << with.errors.toStdString();
    EXPECT_TRUE(with.output.contains("get http://127.0.0.1:"_L1)) << with.output.toStdString();
    EXPECT_TRUE(with.output.contains("tip hello"_L1)) << with.output.toStdString();
}
