// plumkit debug as an editor has it: a process that is talked to.

#include "kit_process.h"
#include "support/debug_talk.h"
#include "support/temporary_files.h"

#include <QJsonArray>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;
using plum::test::DebugTalk;
using plum::test::KitRun;
using plum::test::runKit;
using plum::test::TemporaryFiles;

namespace {

KitRun debug(const std::function<void(DebugTalk &talk)> &talk)
{
    return runKit({u"debug"_s}, [&](QProcess &process) {
        DebugTalk editor(process);
        talk(editor);
        process.closeWriteChannel();
    });
}

} // namespace

TEST(DebugSession, EndsInOrderWhenTheEditorHasEndedTheTalk)
{
    const KitRun run = debug([](DebugTalk &talk) {
        EXPECT_EQ(talk.ask(u"initialize"_s)[u"success"_s], true);
        EXPECT_EQ(talk.ask(u"disconnect"_s)[u"success"_s], true);
    });
    EXPECT_EQ(run.status, 0) << qPrintable(run.errors);
}

TEST(DebugSession, GoesOnBehindAMessageThatIsNone)
{
    const KitRun run = debug([](DebugTalk &talk) {
        for (const char *content : {"no json", "[1]", "", "{\"seq\":1"}) {
            talk.sendText(content);
            EXPECT_EQ(talk.next()[u"message"_s], u"what came is no JSON object"_s);
        }
        EXPECT_EQ(talk.ask(u"initialize"_s)[u"success"_s], true);
        talk.ask(u"disconnect"_s);
    });
    EXPECT_EQ(run.status, 0);
}

TEST(DebugSession, EndsWhereItCannotTellWhereAMessageBegins)
{
    for (const QByteArray &header : {QByteArray("Content-Length: -3\r\n\r\n"),
             QByteArray("Content-Length: x\r\n\r\n"), QByteArray("Hello: 3\r\n\r\n"),
             QByteArray("Content-Length: 99999999999\r\n\r\n"), QByteArray(5000, 'x')}) {
        const KitRun run = debug([&](DebugTalk &talk) {
            talk.sendBytes(header);
            EXPECT_EQ(
                talk.next()[u"message"_s], u"what came has no usable Content-Length; nothing more is read"_s);
        });
        EXPECT_EQ(run.status, 1);
    }
}

TEST(DebugSession, EndsTheRunWithTheStream)
{
    const TemporaryFiles files;
    const QString script = files.write(u"main.wf"_s, "time.sleep \"600000\"\r\n");
    EXPECT_EQ(debug([&](DebugTalk &talk) { talk.start(script); }).status, 1)
        << "it would sleep for ten minutes";
    EXPECT_EQ(debug([&](DebugTalk &talk) {
        talk.start(script, {{u"stopOnEntry"_s, true}});
        EXPECT_EQ(talk.event(u"stopped"_s)[u"body"_s][u"reason"_s], u"entry"_s);
    }).status,
        1)
        << "held";
}

// The shell waits until nobody reads what the debugger says.
TEST(DebugSession, EndsInItsOwnTimeWhenNobodyListensAnyMore)
{
    const TemporaryFiles files;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    environment.insert(u"XDG_RUNTIME_DIR"_s, files.folder());
    QProcess shell;
    shell.setProcessEnvironment(environment);
    shell.start(u"bash"_s,
        {u"-c"_s, u"mkfifo \"$1\" && { : < \"$1\" & } && exec 3> \"$1\" && wait && exec \"$0\" debug >&3"_s,
            QStringLiteral(PLUM_KIT), files.folder() + u"/nobody"_s});
    DebugTalk talk(shell);
    talk.send(u"initialize"_s);
    talk.send(u"disconnect"_s);
    ASSERT_TRUE(shell.waitForFinished(60'000));
    EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().toStdString();
}

TEST(DebugSession, RunsAScriptAndTellsItsStatus)
{
    const TemporaryFiles files;
    const QString script = files.write(u"main.wf"_s, "//edition:2\nset.a set.who\nset.b set.nobody\n");
    const KitRun run = debug([&](DebugTalk &talk) {
        talk.start(script, {{u"set"_s, QJsonObject{{u"who"_s, u"Ann"_s}}}});
        EXPECT_EQ(talk.event(u"output"_s)[u"body"_s][u"output"_s],
            QString(script + u":3:7: nobody was never set\n"_s));
        EXPECT_EQ(talk.event(u"exited"_s)[u"body"_s][u"exitCode"_s], 1);
        talk.event(u"terminated"_s);
        EXPECT_EQ(talk.ask(u"threads"_s)[u"success"_s], true);
        EXPECT_EQ(talk.ask(u"stackTrace"_s)[u"message"_s], u"the run is not held"_s);
        talk.ask(u"disconnect"_s);
    });
    EXPECT_EQ(run.status, 0);
}

TEST(DebugSession, AnswersWhileTheRunIsHeldAndWhileItWaits)
{
    const TemporaryFiles files;
    const QString script = files.write(u"main.wf"_s, "set.a \"1\"\r\ntime.sleep \"600000\"\r\n");
    const KitRun run = debug([&](DebugTalk &talk) {
        talk.start(script, {{u"stopOnEntry"_s, true}});
        talk.event(u"stopped"_s);
        EXPECT_EQ(talk.ask(u"stackTrace"_s)[u"body"_s][u"totalFrames"_s], 1);
        talk.ask(u"next"_s);
        talk.event(u"stopped"_s);
        EXPECT_EQ(talk.ask(u"evaluate"_s, {{u"expression"_s, u"a"_s}})[u"body"_s][u"result"_s], u"1"_s);
        talk.ask(u"continue"_s);
        EXPECT_EQ(talk.ask(u"threads"_s)[u"success"_s], true);
        talk.send(u"terminate"_s);
        EXPECT_EQ(talk.event(u"exited"_s)[u"body"_s][u"exitCode"_s], 130);
        EXPECT_EQ(talk.ask(u"disconnect"_s)[u"success"_s], true);
    });
    EXPECT_EQ(run.status, 0);
}

TEST(DebugSession, EndsARunThatTakesTooLong)
{
    const TemporaryFiles files;
    const KitRun run = debug([&](DebugTalk &talk) {
        talk.start(files.write(u"main.wf"_s, "time.sleep \"600000\"\r\n"), {{u"timeout"_s, 0.2}});
        EXPECT_EQ(talk.event(u"exited"_s)[u"body"_s][u"exitCode"_s], 124);
        talk.ask(u"disconnect"_s);
    });
    EXPECT_EQ(run.status, 0);
}

// It computes for ever and never waits.
TEST(DebugSession, StopsADryRunThatNeverEnds)
{
    const TemporaryFiles files;
    const QString script = files.write(
        u"main.wf"_s, "//edition:2\nset.n 1\nrepeat.while set.n,is,1\n    set.m 1\nrepeat.end\n");
    for (const QString &word : {u"terminate"_s, u"pause"_s}) {
        const KitRun run = debug([&](DebugTalk &talk) {
            talk.start(script, {{u"dry"_s, true}});
            if (word == "pause"_L1) {
                talk.send(word);
                EXPECT_EQ(talk.event(u"stopped"_s)[u"body"_s][u"reason"_s], u"pause"_s);
            }
            // The run may have ended before this is answered.
            talk.send(u"terminate"_s);
            EXPECT_EQ(talk.event(u"exited"_s)[u"body"_s][u"exitCode"_s], 130);
            talk.ask(u"disconnect"_s);
        });
        EXPECT_EQ(run.status, 0);
    }
}

TEST(DebugSession, SaysWhatADryRunWouldDo)
{
    const TemporaryFiles files;
    const QString script = files.write(u"main.wf"_s, "input.text \"who\",\"Who?\"\r\nmouse.move \"3:4\"\r\n");
    const KitRun run = debug([&](DebugTalk &talk) {
        talk.start(script, {{u"dry"_s, true}, {u"answers"_s, QJsonArray{u"Ann"_s}}});
        QString output;
        for (;;) {
            const QJsonObject message = talk.next();
            ASSERT_FALSE(message.isEmpty());
            if (message[u"event"_s] == u"exited"_s)
                break;
            output += message[u"body"_s][u"output"_s].toString();
        }
        EXPECT_TRUE(output.contains(u"   answer Ann\n"_s)) << qPrintable(output);
        EXPECT_TRUE(output.contains(u"2: move 3 4\n"_s)) << qPrintable(output);
        talk.ask(u"disconnect"_s);
    });
    EXPECT_EQ(run.status, 0);
}
