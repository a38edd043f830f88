#include "recording/recording_commands.h"
#include "support/second_edition.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

// The rows that edition 2 alone has, and what the rows of both do otherwise there.

using namespace Qt::StringLiterals;
using plum::ProgramResult;
using plum::recording::failureOf;
using plum::recording::ScriptBench;
using plum::test::TemporaryFiles;

namespace {

class EditionTwoRows : public testing::Test
{
protected:
    QString inFolder(const QString &name) const { return files.folder() + u'/' + name; }

    ScriptBench bench;
    TemporaryFiles files;
};

} // namespace

TEST_F(EditionTwoRows, FileWriteWritesExactly)
{
    const QString path = inFolder(u"a.txt"_s);
    EXPECT_FALSE(failureOf(bench, u"file.write"_s, {path, u"one"_s, {}}));
    EXPECT_EQ(files.read(u"a.txt"_s), "one");
    EXPECT_FALSE(failureOf(bench, u"file.write"_s, {path, u"\ntwo"_s, u"append"_s}));
    EXPECT_EQ(files.read(u"a.txt"_s), "one\ntwo");
    EXPECT_FALSE(failureOf(bench, u"file.write"_s, {path, u""_s, {}}));
    EXPECT_EQ(files.read(u"a.txt"_s), "");
    EXPECT_TRUE(failureOf(bench, u"file.write"_s, {files.folder(), u"x"_s, {}}));
    EXPECT_TRUE(failureOf(bench, u"file.write"_s, {inFolder(u"no/such/folder"_s), u"x"_s, {}}));
}

TEST_F(EditionTwoRows, FileReadAllKeepsLineEnds)
{
    const QString path = files.write(u"a.txt"_s, "one\ntwo\r\n");
    EXPECT_FALSE(failureOf(bench, u"file.read"_s, {path, u"all"_s, u"v"_s}));
    EXPECT_EQ(bench.variable(u"v"_s), u"one\ntwo\r\n"_s);
    bench.runKeepingVariables({u"file.read \"%1\",\"all\",\"w\""_s.arg(path)});
    EXPECT_EQ(bench.variable(u"w"_s), QString()) << "edition 1 has no such mode";
}

TEST_F(EditionTwoRows, FileExistsIsOneOrZero)
{
    files.write(u"a.txt"_s, "x");
    for (const auto &[name, answer] : {std::pair(u"a.txt"_s, u"1"_s), std::pair(u"b.txt"_s, u"0"_s)}) {
        EXPECT_FALSE(failureOf(bench, u"file.exists"_s, {inFolder(name), u"v"_s}));
        EXPECT_EQ(bench.variable(u"v"_s), answer);
    }
}

TEST_F(EditionTwoRows, FileListNamesFilesByPattern)
{
    for (const QString &name : {u"b.txt"_s, u"a.txt"_s, u"c.png"_s, u"sub/d.txt"_s})
        files.write(name, "x");
    EXPECT_FALSE(failureOf(bench, u"file.list"_s, {files.folder(), u"*.txt"_s, u"v"_s}));
    EXPECT_EQ(bench.variable(u"v"_s), u"a.txt\r\nb.txt"_s);
    EXPECT_FALSE(failureOf(bench, u"file.list"_s, {files.folder(), {}, u"v"_s}));
    EXPECT_EQ(bench.variable(u"v"_s), u"a.txt\r\nb.txt\r\nc.png"_s);
    EXPECT_EQ(failureOf(bench, u"file.list"_s, {inFolder(u"none"_s), {}, u"v"_s}),
        u"there is no folder %1"_s.arg(inFolder(u"none"_s)));
}

TEST_F(EditionTwoRows, FileMoveReplacesNothing)
{
    const QString from = files.write(u"a.txt"_s, "a");
    const QString taken = files.write(u"b.txt"_s, "b");
    EXPECT_EQ(failureOf(bench, u"file.move"_s, {from, taken}), u"%1 is there already"_s.arg(taken));
    EXPECT_EQ(files.read(u"b.txt"_s), "b");
    EXPECT_FALSE(failureOf(bench, u"file.move"_s, {from, inFolder(u"c.txt"_s)}));
    EXPECT_EQ(files.read(u"c.txt"_s), "a");
    EXPECT_EQ(
        failureOf(bench, u"file.move"_s, {from, inFolder(u"d.txt"_s)}), u"there is no file %1"_s.arg(from));
}

TEST_F(EditionTwoRows, OsRunStoresOutputAndStatus)
{
    bench.programs.result = {ProgramResult::Outcome::Ended, 3, "some\ntext\r\n\n"};
    EXPECT_FALSE(
        failureOf(bench, u"os.run"_s, {u"tool"_s, {}, u"out"_s, u"status"_s}, {u"a b"_s, u"\"c\""_s}));
    EXPECT_EQ(bench.events(), QStringList{u"run tool|a b|\"c\"|60000"_s});
    EXPECT_EQ(bench.variable(u"out"_s), u"some\ntext"_s);
    EXPECT_EQ(bench.variable(u"status"_s), u"3"_s);
}

TEST_F(EditionTwoRows, OsRunWithoutAStatusVariableFailsWithTheProgram)
{
    bench.programs.result = {ProgramResult::Outcome::Ended, 3, "x"};
    EXPECT_EQ(failureOf(bench, u"os.run"_s, {u"tool"_s, {}, u"out"_s, {}}), u"tool ended with status 3"_s);
    EXPECT_FALSE(bench.state.vardict.contains(u"out"_s));
    bench.programs.result = {ProgramResult::Outcome::Ended, 0, "x"};
    EXPECT_FALSE(failureOf(bench, u"os.run"_s, {u"tool"_s, {}, {}, {}}));
}

TEST_F(EditionTwoRows, OsRunFailsWhenNothingStartsOrEnds)
{
    for (const auto &[outcome, reason] :
        {std::pair(ProgramResult::Outcome::NotStarted, u"tool cannot be started"_s),
            std::pair(ProgramResult::Outcome::TimedOut, u"tool did not end within 60 s"_s)}) {
        bench.programs.result = {outcome, 0, {}};
        EXPECT_EQ(failureOf(bench, u"os.run"_s, {u"tool"_s, {}, u"out"_s, u"status"_s}), reason);
    }
}

TEST_F(EditionTwoRows, NetRequestSendsWhatTheScriptSays)
{
    bench.http.answer = {.status = 201, .contentType = {}, .body = "made"};
    EXPECT_FALSE(failureOf(bench, u"net.request"_s,
        {u"post"_s, u"http://x/"_s, u"X-One: 1\r\nContent-Type: application/json"_s, u"{}"_s, u"answer"_s,
            u"status"_s, u"500"_s}));
    EXPECT_EQ(bench.events(), QStringList{u"request POST http://x/ 500"_s});
    EXPECT_EQ(bench.http.requested.body, "{}");
    EXPECT_EQ(bench.http.requested.headers.size(), 2);
    EXPECT_EQ(bench.variable(u"answer"_s), u"made"_s);
    EXPECT_EQ(bench.variable(u"status"_s), u"201"_s);
}

TEST_F(EditionTwoRows, NetRequestWithoutAStatusVariableFailsWithTheStatus)
{
    bench.http.answer = {.status = 404, .contentType = {}, .body = {}};
    const QStringList fields{u"get"_s, u"http://x/"_s, {}, {}, u"answer"_s, {}, {}};
    EXPECT_EQ(failureOf(bench, u"net.request"_s, fields), u"http://x/ answers with status 404"_s);
    bench.http.answer.status = 0;
    QStringList withStatus = fields;
    withStatus[5] = u"status"_s;
    EXPECT_EQ(
        failureOf(bench, u"net.request"_s, withStatus), u"nothing answers at http://x/ within 30000 ms"_s);
}

TEST_F(EditionTwoRows, NetRequestTakesNoHeaderThatIsNone)
{
    for (const QString &header : {u"no colon"_s, u": empty"_s, u"a b: c"_s})
        EXPECT_EQ(failureOf(bench, u"net.request"_s, {u"get"_s, u"http://x/"_s, header, {}, {}, {}, {}}),
            u"\"%1\" is no header"_s.arg(header));
    EXPECT_EQ(bench.events(), QStringList());
}

TEST_F(EditionTwoRows, KeysAreThoseOfTheWholeTable)
{
    EXPECT_FALSE(failureOf(bench, u"keyboard.hotkey"_s, {{}}, {u"ctrl"_s, u"shift"_s, u"z"_s}));
    EXPECT_EQ(bench.events(),
        (QStringList{
            u"key 17 0"_s, u"key 16 0"_s, u"key 90 0"_s, u"key 17 2"_s, u"key 16 2"_s, u"key 90 2"_s}));
    EXPECT_EQ(
        failureOf(bench, u"keyboard.key_down"_s, {u"escape"_s}), u"there is no key called \"escape\""_s);
}

TEST_F(EditionTwoRows, TypingGoesAPieceAtATime)
{
    EXPECT_FALSE(failureOf(bench, u"keyboard.type"_s, {QString(40, u'x')}));
    EXPECT_EQ(bench.events(),
        (QStringList{
            u"type "_s + QString(32, u'x'), u"wait 10"_s, u"type "_s + QString(8, u'x'), u"wait 10"_s}));
    EXPECT_EQ(bench.platform.clipboard().content, QString());
}
