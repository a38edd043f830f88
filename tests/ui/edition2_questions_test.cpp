#include "ui/launcher_bench.h"

#include <QLineEdit>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Tips and questions of scripts of edition 2, in the launcher.
class Edition2QuestionsTest : public testing::Test, protected recording::LauncherBench
{
protected:
    // Runs an app of these lines; the first one, which asks for the edition, goes without saying.
    void run(const QByteArray &lines, const QString &keyword = u"task"_s)
    {
        folder.addApp(keyword, "//edition:2\n" + lines);
        if (!ui.window())
            start();
        system.starts().runApp(keyword, RunStart::ScriptPath::Kept);
    }

    static QLineEdit *entry() { return inBox<QLineEdit>("Text1"); }
};

} // namespace

TEST_F(Edition2QuestionsTest, aTipGoesOnHoweverItIsClosed)
{
    for (const int closing : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        run("os.tips \"tip\"\nnote.down \"on\"\n");
        key(inBox("tipsbox"), closing);
        EXPECT_FALSE(topLevel("shurubox"));
    }
    run("os.tips \"tip\"\nnote.down \"on\"\n");
    click(inBox("Image1"));
    EXPECT_EQ(said(), QStringList(4, u"note on"_s));
}

TEST_F(Edition2QuestionsTest, enterAndTheButtonConfirmAQuestion)
{
    const QByteArray script = "input.text who,\"?\"\nnote.down set.who\n";
    run(script);
    type(entry(), u"Ann"_s);
    click(inBox("Label1"));
    run(script);
    type(entry(), u"Bob"_s);
    key(entry(), Qt::Key_Return);
    EXPECT_EQ(said(), (QStringList{u"note Ann"_s, u"note Bob"_s}));
}

TEST_F(Edition2QuestionsTest, escAndTheClosePictureGiveAQuestionUp)
{
    run("input.text who,\"?\"\nnote.down \"on\"\n");
    key(entry(), Qt::Key_Escape);
    run("input.text who,\"?\"\nnote.down \"on\"\n");
    click(inBox("Image1"));
    EXPECT_EQ(user.seen, QStringList(2, u"!task, line 2, column 1: given up"_s));
    EXPECT_FALSE(said().contains(u"note on"_s));
    EXPECT_FALSE(said().filter(u"end process"_s).size()) << "the launcher stays";
}

TEST_F(Edition2QuestionsTest, givingUpIsCaught)
{
    run("try.start\ninput.text who,\"?\"\ntry.failed why\nnote.down set.why\ntry.end\n");
    key(entry(), Qt::Key_Escape);
    EXPECT_EQ(said(), QStringList(u"note given up"_s));
    EXPECT_EQ(user.seen, QStringList());
}

TEST_F(Edition2QuestionsTest, aRunGoesOnInTheMiddleOfARepetition)
{
    run("repeat.times 2,i\nos.tips \"tip\"\nnote.down set.i\nrepeat.end\n");
    key(inBox("tipsbox"), Qt::Key_Return);
    key(inBox("tipsbox"), Qt::Key_Return);
    EXPECT_EQ(said(), (QStringList{u"note 1"_s, u"note 2"_s}));
}

TEST_F(Edition2QuestionsTest, aNewRunEndsTheOneThatRests)
{
    run("os.tips \"tip\"\nnote.down \"old\"\n");
    run("note.down \"new\"\n", u"other"_s);
    click(inBox("Image1"));
    EXPECT_EQ(said(), QStringList(u"note new"_s));

    run("os.tips \"tip\"\nnote.down \"old\"\n");
    folder.addApp(u"first"_s, "note.down \"edition 1\"\r\n");
    system.starts().runApp(u"first"_s, RunStart::ScriptPath::Kept);
    click(inBox("Image1"));
    EXPECT_EQ(said(), (QStringList{u"note new"_s, u"note edition 1"_s}));
}

} // namespace plum
