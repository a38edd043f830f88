#include "commands/file_functions.h"
#include "recording/recording_commands.h"
#include "support/recording_folders.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::StringLiterals;
using plum::recording::ScriptBench;
using plum::test::TemporaryFiles;

namespace {

// Runs one line and returns what it left in the variable x; "unset" when it never wrote it.
QString resultOf(ScriptBench &bench, const QString &line)
{
    bench.runKeepingVariables({u"set.x \"unset\""_s, line});
    return bench.variable(u"x"_s);
}

} // namespace

TEST(FileOpen, StartsWithEachShowMode)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.open \"C:/a/b.exe\",\"-x 1\",\"\""_s),
        QStringList{u"open C:\\a\\b.exe|-x 1|1"_s});
    EXPECT_EQ(bench.eventsOf(u"file.open \"b.exe\",\"\",\"hide\""_s), QStringList{u"open b.exe||0"_s});
    EXPECT_EQ(bench.eventsOf(u"file.open \"b.exe\",\"\",\"min\""_s), QStringList{u"open b.exe||6"_s});
    EXPECT_EQ(bench.eventsOf(u"file.open \"b.exe\",\"\",\"max\""_s), QStringList{u"open b.exe||3"_s});
}

TEST(FileOpen, UnknownShowModeStartsNothing)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.open \"notepad.exe\",\"\",\"foo\""_s), QStringList());
    EXPECT_EQ(bench.eventsOf(u"file.open \"notepad.exe\",\"\",\"HIDE\""_s), QStringList());
}

TEST(FileOpen, AMissingModeIsTheNormalOne)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.open \"b.exe\",\"-x\""_s), QStringList{u"open b.exe|-x|1"_s});
}

TEST(FileOpen, ASingleFieldIsAlsoItsOwnModeAndStartsNothing)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.open \"notepad.exe\""_s), QStringList());
}

TEST(FileOpen, EmptyPathStartsNothing)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.open \"\",\"\",\"\""_s), QStringList());
}

TEST(FileOpen, FailureIsSilent)
{
    ScriptBench bench;
    static_cast<plum::recording::RecordingShell &>(bench.platform.shell()).succeeds = false;
    bench.runKeepingVariables({u"file.open \"nothing.exe\",\"\",\"\""_s, u"set.after \"1\""_s});
    EXPECT_EQ(bench.variable(u"after"_s), u"1"_s);
}

TEST(FileCommand, CommandWordsAreLowerCased)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.OPEN \"b.exe\",\"\",\"\""_s), QStringList{u"open b.exe||1"_s});
    EXPECT_EQ(bench.eventsOf(u"file.delete \"b.exe\",\"\",\"\""_s), QStringList());
}

TEST(FileCall, StartsHiddenAndShowsTheStore)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.call \"p.exe\",\"-a\",\"\""_s),
        (QStringList{u"open p.exe|-a|0"_s, u"store layout"_s, u"store loading"_s}));
}

TEST(FileCall, ResolvesTheScriptsFolder)
{
    ScriptBench bench;
    bench.state.runctx[0] = u"C:\\a\\main.wf"_s;
    EXPECT_EQ(
        bench.eventsOf(u"file.call \"_pfold_/p.exe\",\"/x\",\"\""_s).first(), u"open C:\\a\\p.exe|/x|0"_s);
    EXPECT_EQ(
        bench.eventsOf(u"file.open \"_pfold_/p.exe\",\"/x\",\"\""_s).first(), u"open C:\\a\\p.exe|/x|1"_s);
}

TEST(FileCall, HtmlSizesTheBrowserAndEmptiesIt)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.call \"p.exe\",\"-a\",\"html\",\"400:300\""_s),
        (QStringList{u"browser width 425"_s, u"browser height 325"_s, u"browser blank"_s,
            u"open p.exe|-a|0"_s, u"store layout"_s, u"store loading"_s}));
}

TEST(FileCall, HtmlWithoutASizeKeepsIt)
{
    ScriptBench bench;
    const QStringList expected{
        u"browser blank"_s, u"open p.exe|-a|0"_s, u"store layout"_s, u"store loading"_s};
    EXPECT_EQ(bench.eventsOf(u"file.call \"p.exe\",\"-a\",\"html\",\"\""_s), expected);
    EXPECT_EQ(bench.eventsOf(u"file.call \"p.exe\",\"-a\",\"html\""_s), expected);
}

TEST(FileCall, AWidthThatIsNoNumberStillSetsTheHeight)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.call \"p.exe\",\"\",\"html\",\"wide:300\""_s),
        (QStringList{u"browser height 325"_s, u"browser blank"_s, u"open p.exe||0"_s, u"store layout"_s,
            u"store loading"_s}));
}

TEST(FileCall, ASizeWithoutAColonIsBothLengths)
{
    ScriptBench bench;
    EXPECT_EQ(bench.eventsOf(u"file.call \"p.exe\",\"\",\"html\",\"200\""_s).first(2),
        (QStringList{u"browser width 225"_s, u"browser height 225"_s}));
}

TEST(FileCall, WithoutArgumentsStillShowsTheStore)
{
    ScriptBench bench;
    EXPECT_EQ(
        bench.eventsOf(u"file.call "_s), (QStringList{u"open ||0"_s, u"store layout"_s, u"store loading"_s}));
}

TEST(FileCallJs, EvaluatesTheFileWithoutItsLineEnds)
{
    ScriptBench bench;
    TemporaryFiles files;
    auto &javaScript = static_cast<plum::recording::RecordingJavaScript &>(bench.platform.javaScript());
    javaScript.answer.value = u"3"_s;
    const QString path = files.write(u"sum.js"_s, "function sum(a,b)\r\n{ return a + b; }\r\n");
    EXPECT_EQ(bench.eventsOf(u"file.call_js \"%1\",\"sum\",\"1_,_2\",\"x\""_s.arg(path)),
        QStringList{u"javascript function sum(a,b){ return a + b; }sum(1,2);"_s});
    EXPECT_EQ(bench.variable(u"x"_s), u"3"_s);
}

TEST(FileCallJs, BackslashesInTheArgumentsBecomeSlashes)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"f.js"_s, "f=String;");
    EXPECT_EQ(bench.eventsOf(u"file.call_js \"%1\",\"f\",\"'C:\\a\\b'\",\"x\""_s.arg(path)),
        QStringList{u"javascript f=String;f('C:/a/b');"_s});
}

TEST(FileCallJs, AnAddressIsFetched)
{
    ScriptBench bench;
    bench.http.answer = {200, {}, "function f(){}\r\n// end\n"};
    EXPECT_EQ(bench.eventsOf(u"file.call_js \"http://h/f.js\",\"f\",\"\",\"x\""_s),
        (QStringList{u"get http://h/f.js"_s, u"javascript function f(){}// end\nf();"_s}));
}

TEST(FileCallJs, OnlyHttpInSmallLettersIsAnAddress)
{
    ScriptBench bench;
    bench.http.answer = {200, {}, "x"};
    EXPECT_EQ(bench.eventsOf(u"file.call_js \"HTTP://h/f.js\",\"f\",\"\",\"x\""_s),
        QStringList{u"javascript f();"_s});
    EXPECT_EQ(bench.eventsOf(u"file.call_js \"https://h/f.js\",\"f\",\"\",\"x\""_s).first(),
        u"get https://h/f.js"_s);
}

TEST(FileCallJs, HtmlDiscardsTheResult)
{
    ScriptBench bench;
    bench.runKeepingVariables({u"file.call_js \"none.js\",\"f\",\"\",\"html\""_s});
    EXPECT_EQ(bench.state.vardict.size(), 0);
}

TEST(FileCallJs, AFailingEvaluationLeavesTheEmptyText)
{
    ScriptBench bench;
    static_cast<plum::recording::RecordingJavaScript &>(bench.platform.javaScript()).answer
        = {false, u"SyntaxError"_s};
    EXPECT_EQ(resultOf(bench, u"file.call_js \"none.js\",\"f\",\"\",\"x\""_s), QString());
}

TEST(FileRead, ModesOnThreeLines)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"a.txt"_s, "A\r\nB\r\nC");
    EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"r\",\"x\""_s.arg(path)), u"C\r\nB\r\nA\r\n"_s);
    EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"\",\"x\""_s.arg(path)), u"ABC"_s);
    EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"2\",\"x\""_s.arg(path)), u"B"_s);
}

TEST(FileRead, ALineOutsideTheFileIsEmpty)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"a.txt"_s, "A\r\nB\r\nC\r\n");
    for (const QString &number : {u"0"_s, u"-1"_s, u"4"_s, u"2147483647"_s})
        EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"%2\",\"x\""_s.arg(path, number)), QString());
}

TEST(FileRead, AModeThatIsNoNumberIsEmpty)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"a.txt"_s, "A\r\n");
    EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"R\",\"x\""_s.arg(path)), QString());
    EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"99999999999\",\"x\""_s.arg(path)), QString());
}

TEST(FileRead, WhatCannotBeReadIsEmpty)
{
    ScriptBench bench;
    TemporaryFiles files;
    EXPECT_EQ(resultOf(bench, u"file.read \"%1/missing\",\"\",\"x\""_s.arg(files.folder())), QString());
    EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"r\",\"x\""_s.arg(files.folder())), QString());
    EXPECT_EQ(resultOf(bench, u"file.read \"/dev/zero\",\"1\",\"x\""_s), QString());
    EXPECT_EQ(resultOf(bench, u"file.read \"\",\"1\",\"x\""_s), QString());
}

TEST(FileRead, APipeDoesNotStopTheScript)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString pipe = files.folder() + u"/pipe"_s;
    if (std::system(("mkfifo " + pipe.toStdString()).c_str()) != 0)
        GTEST_SKIP() << "This system has no pipes in its folders.";
    EXPECT_EQ(resultOf(bench, u"file.read \"%1\",\"\",\"x\""_s.arg(pipe)), QString());
}

TEST(FileRead, ResolvesTheScriptsFolder)
{
    ScriptBench bench;
    TemporaryFiles files;
    files.write(u"data/in.txt"_s, "found");
    bench.state.runctx[0] = files.folder() + u"/main.wf"_s;
    EXPECT_EQ(resultOf(bench, u"file.read \"_pfold_/data/in.txt\",\"\",\"x\""_s), u"found"_s);
}

TEST(FileSave, AppendsTheVariableAsALine)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"t.txt"_s, "old\r\n");
    const QString line = u"file.save \"%1\",\"v\",\"append\""_s.arg(path);
    bench.runKeepingVariables({u"set.v \"née\""_s, line, line});
    EXPECT_EQ(files.read(u"t.txt"_s),
        "old\r\nn\xC3\xA9"
        "e\r\nn\xC3\xA9"
        "e\r\n");
}

TEST(FileSave, WithoutAModeLeavesTheFileUntouched)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"t.txt"_s, "old");
    bench.runKeepingVariables({u"set.v \"new\""_s, u"file.save \"%1\",\"v\""_s.arg(path),
        u"file.save \"%1\",\"v\",\"\""_s.arg(path), u"file.save \"%1\",\"v\",\"Append\""_s.arg(path),
        u"file.save \"%1\",\"v\",\"overwrite\""_s.arg(path)});
    EXPECT_EQ(files.read(u"t.txt"_s), "old");
}

TEST(FileSave, AppendMakesAMissingFile)
{
    ScriptBench bench;
    TemporaryFiles files;
    bench.runKeepingVariables({u"file.save \"%1/new.txt\",\"unknown\",\"append\""_s.arg(files.folder())});
    EXPECT_EQ(files.read(u"new.txt"_s), "\r\n");
}

TEST(FileSave, PlaceholdersAreNotResolved)
{
    ScriptBench bench;
    TemporaryFiles files;
    bench.state.runctx[0] = files.folder() + u"/main.wf"_s;
    bench.runKeepingVariables({u"set.v \"1\""_s, u"file.save \"_pfold_/t.txt\",\"v\",\"append\""_s});
    EXPECT_FALSE(QFile::exists(files.folder() + u"/t.txt"_s));
}

TEST(FileSave, WhatCannotBeWrittenLeavesTheScriptRunning)
{
    ScriptBench bench;
    TemporaryFiles files;
    bench.runKeepingVariables({u"file.save \"%1\",\"v\",\"append\""_s.arg(files.folder()),
        u"file.save \"%1/none/t.txt\",\"v\",\"append\""_s.arg(files.folder()),
        u"file.save \"/dev/full\",\"v\",\"append\""_s, u"set.after \"1\""_s});
    EXPECT_EQ(bench.variable(u"after"_s), u"1"_s);
}

TEST(WriteText, TheEmptyModeReplacesTheFile)
{
    ScriptBench bench;
    TemporaryFiles files;
    const QString path = files.write(u"t.txt"_s, "a longer old text");
    plum::WriteText(path, u"new"_s, QString(), bench.platform.paths(), bench.platform.textCodec());
    EXPECT_EQ(files.read(u"t.txt"_s), "new\r\n");
}

class FolderOpTest : public testing::Test
{
protected:
    FolderOpTest()
    {
        paths.folder = files.folder();
        files.write(u"config/apps/mail/main.wf"_s, "x");
        files.write(u"config/apps/mail/sub/deep.txt"_s, "x");
        files.write(u"outside/keep.txt"_s, "x");
    }

    bool exists(const QString &path) const { return QFileInfo::exists(files.folder() + u'/' + path); }

    TemporaryFiles files;
    plum::recording::RecordingPaths paths;
    plum::recording::RecordingFolders folders{paths};
};

TEST_F(FolderOpTest, DelfoldDeletesAnAppWithItsContent)
{
    plum::FolderOp(u"delfold"_s, files.folder() + u"\\config\\apps\\mail"_s, paths, folders);
    EXPECT_FALSE(exists(u"config/apps/mail"_s));
    EXPECT_TRUE(exists(u"config/apps"_s));
}

TEST_F(FolderOpTest, DelfoldKeepsTheLibraryAndWhatIsOutside)
{
    const QString apps = files.folder() + u"\\config\\apps"_s;
    for (const QString &path : {QString(), apps, apps + u"\\"_s, apps + u"\\."_s, apps + u"\\mail\\.."_s,
             apps + u"\\..\\..\\outside"_s, files.folder(), files.folder() + u"\\outside"_s, u"/"_s}) {
        plum::FolderOp(u"delfold"_s, path, paths, folders);
        EXPECT_TRUE(exists(u"config/apps/mail/main.wf"_s)) << path.toStdString();
        EXPECT_TRUE(exists(u"outside/keep.txt"_s)) << path.toStdString();
    }
}

TEST_F(FolderOpTest, DelfoldOfALinkKeepsWhatItPointsTo)
{
    const QString link = files.folder() + u"/config/apps/linked"_s;
    QFile::link(files.folder() + u"/outside"_s, link);
    if (!QFileInfo(link).isSymbolicLink())
        GTEST_SKIP() << "Qt makes shortcuts on this system, not links.";
    plum::FolderOp(u"delfold"_s, files.folder() + u"\\config\\apps\\linked"_s, paths, folders);
    EXPECT_FALSE(exists(u"config/apps/linked"_s));
    EXPECT_TRUE(exists(u"outside/keep.txt"_s));
}

TEST_F(FolderOpTest, DelfoldOfAMissingFolderAndOtherWordsDoNothing)
{
    plum::FolderOp(u"delfold"_s, files.folder() + u"\\config\\apps\\none"_s, paths, folders);
    plum::FolderOp(u"DELFOLD"_s, files.folder() + u"\\config\\apps\\mail"_s, paths, folders);
    EXPECT_TRUE(exists(u"config/apps/mail/main.wf"_s));
}

TEST_F(FolderOpTest, AddfoldNeverCreatesAFolder)
{
    plum::FolderOp(u"addfold"_s, files.folder() + u"\\config\\apps\\fresh"_s, paths, folders);
    plum::FolderOp(u"addfold"_s, files.folder() + u"\\config\\apps\\mail"_s, paths, folders);
    EXPECT_FALSE(exists(u"config/apps/fresh"_s));
    EXPECT_TRUE(exists(u"config/apps/mail/main.wf"_s));
}
