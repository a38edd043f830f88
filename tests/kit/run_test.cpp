#include "kit_process.h"
#include "support/temporary_files.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::test::KitRun;
using plum::test::runKit;
using plum::test::TemporaryFiles;

namespace {

class KitRuns : public testing::Test
{
protected:
    KitRun run(const QByteArray &script, const QStringList &options = {})
    {
        path = files.write(u"some.wf"_s, script);
        return runKit(QStringList{u"run"_s} + options + QStringList{path});
    }

    // "FILE:place" as errors begin.
    QString at(const QString &place) const { return path + u':' + place; }

    TemporaryFiles files;
    QString path;
};

} // namespace

TEST_F(KitRuns, EndWith0WhenTheScriptIsDone)
{
    const QByteArray target = files.folder().toUtf8() + "/out.txt";
    const KitRun ended = run("//edition:2\nset.a \"done\"\nfile.save \"" + target + "\",a\n");
    EXPECT_EQ(ended.status, 0) << ended.errors.toStdString();
    EXPECT_EQ(ended.errors, QString());
    EXPECT_TRUE(files.read(u"out.txt"_s).startsWith("done"));
}

TEST_F(KitRuns, EndWith1AndThePlaceOfAnErrorOfTheRun)
{
    const KitRun ended = run("//edition:2\nset.a set.b\n");
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.errors, at(u"2:7: b was never set\n"_s));
}

TEST_F(KitRuns, EndWith1AndEveryMistakeThatIsFoundBefore)
{
    const KitRun ended = run("//edition:2\nnothing.at_all\nmouse.clik\n");
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.errors,
        at(u"2:1: there is no namespace \"nothing\"\n"_s) + at(u"3:7: mouse has no command \"clik\"\n"_s));
}

TEST_F(KitRuns, EndWith1AtARunTimeErrorOfEdition1)
{
    const KitRun ended = run("set.a \"1\"\r\nwhile.start \"count\",\"many\"\r\nwhile.end\r\n");
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(ended.errors.startsWith(at(u"3:1: run-time error 13"_s))) << ended.errors.toStdString();
}

TEST_F(KitRuns, EndWith2ForWhatIsUnusable)
{
    EXPECT_EQ(runKit({u"run"_s, u"/there/is/no/such.wf"_s}).status, 2);
    EXPECT_EQ(run("//edition:2\n", {u"--fast"_s}).status, 2);
    EXPECT_EQ(runKit({}).status, 2);
    EXPECT_EQ(runKit({u"fly"_s}).status, 2);
}

TEST_F(KitRuns, WriteWhatTheyDidWhereThatIsAskedFor)
{
    const QString trace = files.folder() + u"/trace.html"_s;
    EXPECT_EQ(run("//edition:2\nset.a 17\nset.b set.a\n", {u"--trace"_s, trace}).status, 0);
    const QByteArray page = files.read(u"trace.html"_s);
    EXPECT_TRUE(page.contains("<code>set.b set.a</code>")) << page.toStdString();
    EXPECT_TRUE(page.contains("b = <code>17</code>")) << page.toStdString();
    const KitRun ended = run("//edition:2\nset.a 1\n", {u"--trace"_s, files.folder()});
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(ended.errors.contains(u"cannot be written"_s)) << ended.errors.toStdString();
}

TEST_F(KitRuns, KeepWhatTheLastOneDidThatFailed)
{
    const QString cache = files.folder() + u"/cache"_s;
    const auto runWith = [&](const QByteArray &script) {
        return runKit({u"run"_s, files.write(u"some.wf"_s, script)}, {}, cache).status;
    };
    EXPECT_EQ(runWith("//edition:2\nset.a 1\n"), 0);
    EXPECT_FALSE(QFileInfo::exists(cache));
    EXPECT_EQ(runWith("//edition:2\nset.a 1\nset.b set.nowhere\n"), 1);
    const QByteArray page = files.read(u"cache/plum/what-happened.html"_s);
    EXPECT_TRUE(page.contains("nowhere was never set")) << page.toStdString();
    EXPECT_EQ(runWith("//edition:2\nset.c 1\n"), 0);
    EXPECT_EQ(files.read(u"cache/plum/what-happened.html"_s), page);
}

TEST_F(KitRuns, EndWith124WhenTheTimeIsOver)
{
    for (const QByteArray &script : std::initializer_list<QByteArray>{"//edition:2\ntime.sleep 60000\n",
             "//edition:2\nrepeat.while 1,is,1\nset.a 1\nrepeat.end\n", "time.sleep \"60000\"\r\n"}) {
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(run(script, {u"--timeout"_s, u"0.3"_s}).status, 124) << script.constData();
        EXPECT_LT(clock.elapsed(), 30'000);
    }
}

TEST_F(KitRuns, EndWith124AlsoInsideSomethingThatNeverReturns)
{
    const QByteArray endless = files.write(u"endless.js"_s, "function f() { for (;;); }").toUtf8();
    const KitRun ended
        = run("//edition:2\nfile.call_js \"" + endless + "\",\"f\"\n", {u"--timeout"_s, u"0.3"_s});
    EXPECT_EQ(ended.status, 124);
}

TEST_F(KitRuns, EndWith130AtCtrlC)
{
    const QString script = files.write(u"some.wf"_s, "//edition:2\nos.tips \"ready\"\ntime.sleep 60000\n");
    const KitRun ended = runKit({u"run"_s, script}, [](QProcess &process) {
        while (!process.readAll().contains("ready") && process.waitForReadyRead(60'000)) { }
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    });
    EXPECT_EQ(ended.status, 130);
}

TEST_F(KitRuns, EndWith130WhenNobodyAnswers)
{
    EXPECT_EQ(run("//edition:2\ninput.text who,\"Who?\"\n").status, 130);
    EXPECT_EQ(run("input.text \"who\",\"Who?\"\r\nset.a \"1\"\r\n").status, 130);
}

TEST_F(KitRuns, GoOnWhenGivingUpIsCaught)
{
    EXPECT_EQ(run("//edition:2\ntry.start\ninput.text who,\"Who?\"\ntry.failed\ntry.end\n").status, 0);
}

TEST_F(KitRuns, PrintTipsWithoutADisplayAndGoOn)
{
    const QByteArray target = files.folder().toUtf8() + "/out.txt";
    const KitRun later = run("//edition:2\nos.tips \"half way\"\nset.a 1\nfile.save \"" + target + "\",a\n");
    EXPECT_EQ(later.status, 0);
    EXPECT_TRUE(later.errors.contains(u"half way"_s));
    EXPECT_TRUE(files.read(u"out.txt"_s).startsWith("1"));
    const KitRun first = run("os.tips \"half way\"\r\nset.a \"1\"\r\n");
    EXPECT_EQ(first.status, 0);
    EXPECT_TRUE(first.errors.contains(u"half way"_s));
}

TEST_F(KitRuns, FindTheVariablesThatAreSet)
{
    const QByteArray target = files.folder().toUtf8() + "/out.txt";
    for (const QByteArray &script :
        std::initializer_list<QByteArray>{"//edition:2\nfile.save \"" + target + "\",who\n",
            "file.save \"" + target + "\",\"who\",\"append\"\r\n"}) {
        EXPECT_EQ(run(script, {u"--set"_s, u"who=Ann"_s}).status, 0);
        EXPECT_TRUE(files.read(u"out.txt"_s).startsWith("Ann")) << script.constData();
        QFile::remove(QString::fromUtf8(target));
    }
}

TEST_F(KitRuns, AnEmptyScriptIsDone)
{
    EXPECT_EQ(run("").status, 0);
    EXPECT_EQ(run("//edition:2\n").status, 0);
}

TEST_F(KitRuns, AreExplained)
{
    EXPECT_TRUE(runKit({u"--help"_s}).output.contains(u"plumkit run"_s));
    const KitRun help = runKit({u"run"_s, u"--help"_s});
    EXPECT_EQ(help.status, 0);
    for (const QString &word : {u"--timeout"_s, u"--set"_s, u"124"_s, u"130"_s})
        EXPECT_TRUE(help.output.contains(word)) << word.toStdString();
}
