#include "engine/run_start.h"
#include "support/probe_handler.h"
#include "support/raised_by.h"
#include "support/recording_folders.h"
#include "support/script_bench.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

// A program folder with one app, "mail", which is the working folder too.
class RunStartTest : public testing::Test
{
protected:
    RunStartTest()
        : m_workingFolder(QDir::currentPath())
    {
        bench.platform.paths().folder = m_folder.path();
        bench.loop.addNamespace(u"file"_s, probe);
        write(u"config/apps/mail/main.wf"_s, "file.mail \r\n");
        write(u"config/apps/mail/.main.wf"_s, "file.copy \r\n");
        QDir::setCurrent(m_folder.path());
    }
    ~RunStartTest() override { QDir::setCurrent(m_workingFolder); }

    QString write(const QString &path, const QByteArray &bytes)
    {
        const QString full = m_folder.filePath(path);
        QDir().mkpath(QFileInfo(full).path());
        QFile file(full);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return full;
    }

    QTemporaryDir m_folder;
    QString m_workingFolder;
    recording::ScriptBench bench;
    recording::ProbeHandler probe;
    recording::RecordingFolders folders{bench.platform.paths()};
    RunStart start{bench.state, bench.loop, bench.files, bench.platform.paths(), folders};
};

using CommandLineStart = RunStartTest;
using AppStart = RunStartTest;
using WholeRun = RunStartTest;
using Resume = RunStartTest;

} // namespace

TEST_F(CommandLineStart, PreparesTheRunOfTheScript)
{
    bench.state.currentKeyword = u"before"_s;
    bench.state.runlist = QStringList{u"before"_s};
    const QString path = write(u"x.wf"_s, "file.a \r\nfile.b ");
    const RunStart::CommandLineScript script = start.prepareCommandLine(path);
    EXPECT_EQ(script.path, path);
    EXPECT_TRUE(script.loaded);
    EXPECT_EQ(bench.state.runlist, (QStringList{u"file.a "_s, u"file.b "_s}));
    EXPECT_EQ(bench.state.runctx[0], path);
    EXPECT_EQ(bench.state.runctx[1], u"jb"_s);
    EXPECT_EQ(bench.state.runidx[2], 1);
    EXPECT_EQ(bench.state.currentKeyword, QString());
    EXPECT_EQ(probe.calls, QStringList()) << "it does not run yet";
}

TEST_F(CommandLineStart, AQuotedScriptOutsideTheLibraryRunsAndEndsTheProcess)
{
    const QString path = write(u"elsewhere/x.wf"_s, "file.a \r\n");
    EXPECT_EQ(start.prepareCommandLine(u'"' + path + u'"').path, path);
    EXPECT_EQ(bench.state.runctx[0], path);
    start.runAll();
    EXPECT_EQ(probe.calls, QStringList{u"a|"_s});
    EXPECT_EQ(bench.events().last(), u"end process"_s);
}

TEST_F(CommandLineStart, AQuotedScriptOfTheLibraryIsLookedForBelowTheWorkingFolder)
{
    const QString full = m_folder.path() + u"\\config\\apps\\mail\\main.wf"_s;
    RunStart::CommandLineScript script = start.prepareCommandLine(u'"' + full + u'"');
    EXPECT_EQ(script.path, u"mail\\main.wf"_s);
    EXPECT_FALSE(script.loaded);
    EXPECT_EQ(bench.state.runctx[0], full);

    QDir::setCurrent(m_folder.filePath(u"config/apps"_s));
    script = start.prepareCommandLine(u'"' + full + u'"');
    EXPECT_TRUE(script.loaded);
    EXPECT_EQ(bench.state.runlist, QStringList{u"file.mail "_s});
}

TEST_F(CommandLineStart, AnUnquotedScriptOfTheLibraryKeepsItsPath)
{
    const QString full = m_folder.path() + u"\\config\\apps\\mail\\main.wf"_s;
    EXPECT_EQ(start.prepareCommandLine(full).path, full);
    EXPECT_EQ(bench.state.runlist, QStringList{u"file.mail "_s});
}

TEST_F(CommandLineStart, AQuotedTextLosesItsFirstAndLastCharacter)
{
    const QString path = write(u"x.wf"_s, "file.a \r\n");
    EXPECT_EQ(start.prepareCommandLine(u'"' + path + u'x').path, path);
    EXPECT_EQ(start.prepareCommandLine(u"\""_s).path, QString());
    EXPECT_EQ(start.prepareCommandLine(u"\"\""_s).path, QString());
}

TEST_F(CommandLineStart, AnythingElseLoadsNothingAndDoesNotEndTheProcess)
{
    bench.state.runlist = QStringList{u"before"_s};
    bench.state.vardict.SetVar(u"a"_s, u"1"_s);
    const RunStart::CommandLineScript script = start.prepareCommandLine(write(u"x.txt"_s, "file.a \r\n"));
    EXPECT_EQ(script.path, QString());
    EXPECT_FALSE(script.loaded);
    start.runAll();
    EXPECT_EQ(bench.events(), QStringList());
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(CommandLineStart, TheEndOfTheNameTellsLetterCaseApart)
{
    EXPECT_EQ(start.prepareCommandLine(write(u"x.WF"_s, "file.a \r\n")).path, QString());
    EXPECT_EQ(start.prepareCommandLine(write(u"x.wf "_s, "file.a \r\n")).path, QString());
}

TEST_F(CommandLineStart, AMissingScriptIsAnEmptyRun)
{
    bench.state.runlist = QStringList{u"before"_s};
    const RunStart::CommandLineScript script = start.prepareCommandLine(m_folder.filePath(u"missing.wf"_s));
    EXPECT_FALSE(script.loaded);
    start.runAll();
    EXPECT_EQ(bench.events(), QStringList());
}

TEST_F(CommandLineStart, AFolderIsAnEmptyRun)
{
    QDir(m_folder.path()).mkdir(u"folder.wf"_s);
    const RunStart::CommandLineScript script = start.prepareCommandLine(m_folder.filePath(u"folder.wf"_s));
    EXPECT_FALSE(script.loaded);
    EXPECT_EQ(bench.state.runlist, QStringList());
}

TEST_F(CommandLineStart, ARelativePathIsOpenedInTheWorkingFolderAndRememberedInFull)
{
    write(u"x.wf"_s, "set.a os.path_pfold\r\ninput.text \"\"");
    EXPECT_TRUE(start.prepareCommandLine(u"x.wf"_s).loaded);
    start.runAll();
    EXPECT_EQ(bench.variable(u"a"_s), QDir::currentPath().replace(u'/', u'\\'));
}

TEST_F(AppStart, RunsTheAppsScriptAndNotItsCopy)
{
    bench.state.runlist = QStringList{u"file.before "_s};
    start.runApp(u"mail"_s, RunStart::ScriptPath::Kept);
    EXPECT_EQ(probe.calls, QStringList{u"mail|"_s});
    EXPECT_EQ(bench.state.currentKeyword, u"mail"_s);
    EXPECT_EQ(bench.state.runctx[1], u"bao"_s);
    EXPECT_FALSE(bench.events().contains(u"end process"_s));
}

TEST_F(AppStart, FromTheAppListRemembersTheScriptsPath)
{
    start.runApp(u"mail"_s, RunStart::ScriptPath::Remembered);
    EXPECT_EQ(bench.state.runctx[0], m_folder.path() + u"\\config\\apps\\mail\\main.wf"_s);
}

TEST_F(AppStart, FromTheKeywordBoxShowsTheFolderOfTheScriptBefore)
{
    write(
        u"config/apps/note/main.wf"_s, "set.a os.path_pfold\r\nset.b os.path_package\r\ninput.text \"\"\r\n");
    start.runApp(u"mail"_s, RunStart::ScriptPath::Remembered);
    start.runApp(u"note"_s, RunStart::ScriptPath::Kept);
    const QString apps = m_folder.path() + u"\\config\\apps\\"_s;
    EXPECT_EQ(bench.variable(u"a"_s), QString(apps + u"mail"_s).replace(u'/', u'\\'));
    EXPECT_EQ(bench.variable(u"b"_s), apps + u"note"_s);
}

TEST_F(AppStart, OfAMissingScriptRunsNothingOfTheOneBefore)
{
    bench.state.runlist = QStringList{u"file.before "_s};
    start.runApp(u"missing"_s, RunStart::ScriptPath::Kept);
    EXPECT_EQ(probe.calls, QStringList());
    EXPECT_EQ(bench.state.runlist, QStringList());
}

TEST_F(AppStart, IsRelativeToTheWorkingFolder)
{
    QDir::setCurrent(m_folder.filePath(u"config"_s));
    start.runApp(u"mail"_s, RunStart::ScriptPath::Kept);
    EXPECT_EQ(probe.calls, QStringList());
}

TEST_F(WholeRun, MoreLinesThanSixteenBitsCountOverflow)
{
    bench.state.runlist = QStringList(40'000, u"file.a "_s);
    EXPECT_EQ(raisedBy([&] { start.runAll(); }), RunTimeError::Overflow);
    EXPECT_EQ(raisedBy([&] { start.resume(); }), RunTimeError::Overflow);
    EXPECT_EQ(probe.calls, QStringList());
}

TEST_F(WholeRun, AsManyLinesAsSixteenBitsCountRun)
{
    bench.waiter.records = false;
    bench.state.runlist = QStringList(32'768, u"file.a "_s);
    start.runAll();
    EXPECT_EQ(probe.calls.size(), 32'768);
}

TEST_F(WholeRun, ALoopOnTheVeryLastLinesStaysWithinSixteenBits)
{
    bench.waiter.records = false;
    bench.state.runlist = QStringList(32'768, u""_s);
    bench.state.runlist[32'765] = u"while.start \"count\",\"2\""_s;
    bench.state.runlist[32'766] = u"file.a "_s;
    bench.state.runlist[32'767] = u"while.end"_s;
    start.runAll();
    EXPECT_EQ(probe.calls.size(), 2);
    bench.state.runlist[32'767] = u"while.start"_s;
    EXPECT_EQ(raisedBy([&] { start.runAll(); }), RunTimeError::Overflow);
}

TEST_F(Resume, GoesOnAfterTheSuspensionToTheLastLine)
{
    bench.state.runlist = QStringList{u"file.a "_s, u"input.text \"who\""_s, u"file.b "_s, u"file.c "_s};
    qint16 first = 0;
    qint16 last = 2;
    bench.loop.RunLines(first, last);
    start.resume();
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"b|"_s, u"c|"_s}))
        << "not only to the end of the first call";
}

TEST_F(Resume, KeepsTheVariablesAndEmptiesThemAtTheEnd)
{
    QString seen;
    probe.onCall = [&] { seen = bench.variable(u"a"_s); };
    bench.run({u"set.a \"1\""_s, u"input.text \"who\""_s, u"file.b "_s});
    start.resume();
    EXPECT_EQ(seen, u"1"_s);
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(Resume, OfARepetitionGoesOnWithTheRestOfTheScript)
{
    bench.run({u"while.start \"count\",\"3\""_s, u"file.a "_s, u"input.text \"who\""_s, u"file.b "_s,
        u"while.end"_s, u"file.c "_s});
    start.resume();
    EXPECT_EQ(probe.calls, (QStringList{u"a|"_s, u"b|"_s, u"c|"_s}));
}

TEST_F(Resume, EndsTheProcessOfACommandLineRun)
{
    bench.state.runctx[1] = u"jb"_s;
    bench.run({u"input.text \"who\""_s, u"file.b "_s});
    EXPECT_FALSE(bench.events().contains(u"end process"_s));
    start.resume();
    EXPECT_EQ(bench.events().last(), u"end process"_s);
}

TEST_F(Resume, AfterTheLastLineEmptiesTheVariables)
{
    bench.run({u"set.a \"1\""_s, u"input.text \"who\""_s});
    start.resume();
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST_F(Resume, SuspendsAgain)
{
    bench.run({u"input.text \"a\""_s, u"input.text \"b\""_s, u"file.c "_s});
    start.resume();
    EXPECT_EQ(bench.events().last(), u"input b|b"_s);
    EXPECT_EQ(bench.state.runidx[0], 2);
    start.resume();
    EXPECT_EQ(probe.calls, QStringList{u"c|"_s});
}
