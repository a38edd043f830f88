#include "engine/editions/later_edition.h"
#include "engine/editions/script_error.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::ScriptBench;
using plum::test::TemporaryFiles;

namespace {

class Edition2Runs : public testing::Test
{
protected:
    // Starts a script as the command line does, in the launcher's mode.
    void start(const QByteArray &text)
    {
        const QString path = files.write(u"%1.wf"_s.arg(++written), text);
        ASSERT_TRUE(bench.system.starts().prepareCommandLine(path).loaded);
        bench.system.starts().runAll();
    }

    QString errorOf(const QByteArray &text)
    {
        try {
            start(text);
        } catch (const ScriptError &error) {
            return error.mistakes().front().reason;
        }
        return {};
    }

    void answer(RunTicket ticket, const Answer &given) { bench.system.starts().answer(ticket, given); }

    ScriptBench bench;
    TemporaryFiles files;
    int written = 0;
};

} // namespace

TEST(AskedEdition, IsWrittenExactly)
{
    EXPECT_EQ(askedEdition("//edition:2\nset.a 1").number, 2);
    EXPECT_EQ(askedEdition("//edition:2\r\nset.a 1").number, 2);
    EXPECT_EQ(askedEdition("//edition:2").number, 2);
    EXPECT_EQ(askedEdition("\xEF\xBB\xBF//edition:2\n").number, 2);
    EXPECT_EQ(askedEdition("//guide:x\n//edition:2\n").line, 2);
    EXPECT_EQ(askedEdition("//edition:3\n").number, 3);
    EXPECT_EQ(askedEdition("//edition:10\n").number, 10);
    for (const char *other : {"", "//edition:2 \n", " //edition:2\n", "// edition:2\n", "//Edition:2\n",
             "//edition:02\n", "//edition:+2\n", "//edition:\n", "//edition:2x\n", "\n//edition:2\n",
             "// guide:x\n//edition:2\n", "//guide:x\n\n//edition:2\n", "//edition:99999999999\n",
             "//edition:2\rset.a \"1\"\r", "//guide:x\r//edition:2\r"})
        EXPECT_EQ(askedEdition(other).number, 1) << other;
}

TEST_F(Edition2Runs, HaveTheirOwnVariables)
{
    bench.state.vardict.SetVar(u"a"_s, u"of edition 1"_s);
    EXPECT_EQ(errorOf("//edition:2\nset.b set.a\n"), u"a was never set"_s);
    start("//edition:2\nset.a 1\nset.b 2\n");
    EXPECT_EQ(bench.variable(u"a"_s), u"of edition 1"_s);
    EXPECT_FALSE(bench.state.vardict.contains(u"b"_s));
}

TEST_F(Edition2Runs, EndTheProcessOfTheCommandLine)
{
    start("//edition:2\nset.a 1\n");
    EXPECT_EQ(bench.events(), QStringList{u"end process"_s});
}

TEST_F(Edition2Runs, AnErrorEndsTheRunAndNotTheProcess)
{
    EXPECT_EQ(errorOf("//edition:2\nset.a set.b\n"), u"b was never set"_s);
    EXPECT_FALSE(bench.events().contains(u"end process"_s));
}

TEST_F(Edition2Runs, LineFeedsAndCarriageReturnsEndLines)
{
    start("//edition:2\r\nmouse.l_down\r\nmouse.l_up\n");
    EXPECT_EQ(bench.events().count(u"mouse 2"_s), 1);
    EXPECT_EQ(bench.events().count(u"mouse 4"_s), 1);
}

TEST_F(Edition2Runs, ALineThatIsNoUtf8IsNamed)
{
    try {
        start("//edition:2\nset.a 1\nset.b \"\xFF\"\n");
        FAIL();
    } catch (const ScriptError &error) {
        EXPECT_EQ(error.mistakes().front().line, 3);
    }
}

TEST_F(Edition2Runs, ANewRunEndsTheOneThatWaits)
{
    start("//edition:2\ninput.text who,\"Who?\"\nmouse.l_down\n");
    start("//edition:2\nset.a 1\n");
    answer(1, {true, u"who"_s, u"Ann"_s});
    EXPECT_FALSE(bench.events().contains(u"mouse 2"_s));
}

TEST_F(Edition2Runs, ANewRunOfEdition1EndsTheOneThatWaits)
{
    start("//edition:2\nos.tips \"x\"\nmouse.l_down\n");
    bench.state.runlist = QStringList{u"set.a \"1\""_s};
    bench.system.starts().runAll();
    answer(1, {});
    EXPECT_FALSE(bench.events().contains(u"mouse 2"_s));
}

TEST_F(Edition2Runs, ARunInsideAWaitOfAnotherHasItsOwnEverything)
{
    int waits = 0;
    bench.waiter.onWait = [&] {
        if (++waits == 1)
            start("//edition:2\nset.a 2\nos.tips \"inner\"\nmouse.r_down\n");
    };
    start("//edition:2\nset.a 1\nmouse.l_down\nos.set_clipboard set.a\nos.tips \"outer\"\nmouse.l_up\n");
    EXPECT_EQ(bench.platform.clipboard().content, u"1"_s);
    EXPECT_EQ(bench.events().last(), u"tip outer"_s);
    answer(1, {});
    EXPECT_TRUE(bench.events().contains(u"mouse 4"_s));
    EXPECT_FALSE(bench.events().contains(u"mouse 8"_s)) << "its tip was replaced";
}

TEST_F(Edition2Runs, TellsWhichRunAsks)
{
    QList<RunTicket> asked;
    bench.waiter.onWait = [&] { asked += bench.system.starts().asking(); };
    start("//edition:2\nmouse.l_down\n");
    bench.state.runlist = QStringList{u"mouse.l_down"_s};
    bench.state.runctx[1] = u"bao"_s;
    bench.system.starts().runAll();
    EXPECT_EQ(asked, (QList<RunTicket>{1, 0}));
}

TEST_F(Edition2Runs, LetTheInterfaceLiveThroughLongCounting)
{
    bool lived = false;
    QMetaObject::invokeMethod(
        qApp, [&] { lived = true; }, Qt::QueuedConnection);
    start("//edition:2\nset.n 0\nrepeat.times 1000000,i\n set.n set.i\nrepeat.end\n");
    EXPECT_TRUE(lived);
}

TEST_F(Edition2Runs, SuggestForABareWordOnlyWhatCanBeWritten)
{
    EXPECT_EQ(errorOf("//edition:2\nset.a who\n"),
        u"\"who\" is a bare word; a text stands in quotes, a variable is written set.who"_s);
    EXPECT_EQ(errorOf("//edition:2\nset.a 1e3\n"), u"\"1e3\" is a bare word; a text stands in quotes"_s);
}

TEST_F(Edition2Runs, ThePlaceOfTheScriptIsItsOwn)
{
    bench.state.runctx[0] = u"/other/script.wf"_s;
    start("//edition:2\nos.set_clipboard os.path_pfold\n");
    EXPECT_EQ(QString(bench.platform.clipboard().content).replace(u'\\', u'/'), files.folder());
}
