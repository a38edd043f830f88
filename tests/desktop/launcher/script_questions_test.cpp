#include "desktop/support/launcher_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Scripts that ask and show tips, started in the launcher or on the command line.
class ScriptQuestionsTest : public LauncherDesktop, public testing::WithParamInterface<bool>
{
protected:
    bool isCommandLine() const { return GetParam(); }

    void start(const QStringList &lines)
    {
        writeApp(u"ask"_s, lines);
        if (isCommandLine()) {
            startProgram({programFolder() + u"/config/apps/ask/main.wf"_s});
            return;
        }
        startLauncher();
        hands->type(u"ask"_s);
        hands->key(u"Return"_s);
    }

    // The line that logs a fixed word.
    QStringList log(const QString &word) const
    {
        return {u"set.word \"%1\""_s.arg(word), resultLine(u"\"word\""_s)};
    }

    void expectTip(const QString &text)
    {
        ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
        ASSERT_TRUE(shows(u"shurubox/tipsbox"_s, text));
        EXPECT_TRUE(see(u"shurubox/shurubox"_s).topmost);
    }

    void expectResults(const QByteArray &expected)
    {
        EXPECT_TRUE(eventually([&] { return results() == expected; })) << results().toStdString();
    }

    // A script on the command line ends with its last line; the launcher stays.
    void expectEnd()
    {
        if (isCommandLine())
            expectGoodEnd();
        else
            EXPECT_TRUE(getsFocus(u"frmSet/Text8"_s));
    }
};

} // namespace

TEST_P(ScriptQuestionsTest, anAnswerIsStoredAndTheScriptGoesOn)
{
    start(
        QStringList{u"input.text \"name\",\"Your name?\""_s, resultLine(u"\"name\""_s),
            u"me.text_input \"town\",\"Your town?\""_s, resultLine(u"\"town\""_s), resultLine(u"\"name\""_s)}
        + log(u"end"_s));
    answerQuestion(u"Your name?"_s, u"Ann"_s);
    answerQuestion(u"Your town?"_s, u"Ulm"_s);
    expectResults("Ann\r\nUlm\r\nAnn\r\nend\r\n");
    expectEnd();
}

TEST_P(ScriptQuestionsTest, enterInTheEntryConfirmsAndAnEmptyAnswerIsOne)
{
    start(QStringList{u"set.name \"before\""_s, u"input.text \"name\",\"Your name?\""_s,
        resultLine(u"\"name\""_s), u"input.text \"name\",\"Again?\""_s, resultLine(u"\"name\""_s)});
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    hands->type(u"Bob"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(shows(u"shurubox/title"_s, u"Again?"_s));
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    EXPECT_EQ(textOf(u"shurubox/Text1"_s), QString());
    hands->key(u"Return"_s);
    expectResults("Bob\r\n\r\n");
    expectEnd();
}

TEST_P(ScriptQuestionsTest, closingATipGoesOnInTheLauncherAndEndsAScriptStart)
{
    start(QStringList{u"set.who \"Ann\""_s, u"os.tips set.who"_s} + log(u"after"_s));
    expectTip(u"Ann"_s);
    EXPECT_EQ(results(), "");
    click(u"shurubox/Image1"_s);
    if (isCommandLine()) {
        expectGoodEnd();
        EXPECT_EQ(results(), "");
    } else {
        expectResults("after\r\n");
    }
}

TEST_P(ScriptQuestionsTest, closingAQuestionStoresNothing)
{
    start(QStringList{
        u"set.name \"before\""_s, u"input.text \"name\",\"Your name?\""_s, resultLine(u"\"name\""_s)});
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    hands->type(u"Bob"_s);
    click(u"shurubox/Image1"_s);
    if (isCommandLine()) {
        expectGoodEnd();
        EXPECT_EQ(results(), "");
    } else {
        expectResults("before\r\n");
    }
}

TEST_P(ScriptQuestionsTest, escAndEnterOutsideTheEntryAbandon)
{
    start(QStringList{u"input.text \"name\",\"Your name?\""_s} + log(u"after"_s));
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(disappears(u"shurubox/shurubox"_s));
    if (isCommandLine()) {
        EXPECT_EQ(results(), "");
        EXPECT_TRUE(isRunning());
        return;
    }
    // Enter on a tip too; what is run next starts from its beginning.
    writeApp(u"ask"_s, QStringList{u"os.tips \"Hello\""_s} + log(u"after"_s));
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Return"_s);
    expectTip(u"Hello"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/tipsbox"_s));
    hands->key(u"Return"_s);
    ASSERT_TRUE(disappears(u"shurubox/shurubox"_s));
    writeApp(u"ask"_s, log(u"fresh"_s));
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Return"_s);
    expectResults("fresh\r\n");
}

TEST_P(ScriptQuestionsTest, aQuestionInALoopGoesOnBehindIt)
{
    start(QStringList{u"while.start \"count\",\"3\""_s, u"input.text \"name\",\"Name?\""_s,
              resultLine(u"\"name\""_s), u"while.end"_s}
        + log(u"end"_s));
    answerQuestion(u"Name?"_s, u"one"_s);
    expectResults("one\r\nend\r\n");
    expectEnd();
}

TEST_P(ScriptQuestionsTest, otherKeysAndADragKeepTheBox)
{
    start(QStringList{u"os.tips \"Stay\""_s} + log(u"after"_s));
    expectTip(u"Stay"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/tipsbox"_s));
    for (const QString &key : {u"a"_s, u"F5"_s, u"Tab"_s})
        hands->key(key);
    const QRect before = stillControl(u"shurubox/shurubox"_s).place;
    dragWindow(u"shurubox"_s, before.bottomLeft() + QPoint(6, -6), {100, 80});
    EXPECT_EQ(textOf(u"shurubox/tipsbox"_s), u"Stay"_s);
    EXPECT_TRUE(isShown(u"shurubox/shurubox"_s));
    EXPECT_EQ(results(), "");
}

INSTANTIATE_TEST_SUITE_P(Start, ScriptQuestionsTest, testing::Bool(),
    [](const auto &test) { return std::string(test.param ? "commandLine" : "launcher"); });

namespace {

class TypedInputTest : public LauncherDesktop
{
};

} // namespace

TEST_F(TypedInputTest, whatIsTypedAfterTheKeywordIsTheInput)
{
    writeApp(u"mail"_s,
        {u"input.enter_2 \"_,_\",\"second\""_s, resultLine(u"\"second\""_s), u"me.enter \"all\""_s,
            resultLine(u"\"all\""_s), u"me.hide"_s});
    startLauncher();
    hands->type(u"mail Ann,Bob"_s);
    hands->key(u"Return"_s);
    // The place of the "_" has always been shown here.
    answer(u"6"_s);
    EXPECT_TRUE(eventually([&] { return results() == "Bob\r\nAnn,Bob\r\n"; })) << results().toStdString();
    EXPECT_TRUE(disappears(u"frmSet/frmSet"_s));
    EXPECT_TRUE(isRunning());
}

// Somebody has fetched the launcher meanwhile, which then has the keyboard.
TEST_F(LauncherDesktop, escLeadsFromTheLauncherBackToTheTip)
{
    writeApp(u"ask"_s, {u"os.tips \"Hello\""_s});
    startLauncher();
    hands->type(u"ask"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/tipsbox"_s));
    QProcess second;
    server().start(second, programFolder() + u"/plum"_s, {});
    ASSERT_TRUE(second.waitForFinished());
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(shows(u"frmSet/Text8"_s, {}));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/tipsbox"_s));
    EXPECT_TRUE(isShown(u"frmSet/frmSet"_s));
    hands->key(u"Escape"_s);
    EXPECT_TRUE(disappears(u"shurubox/shurubox"_s));
}

} // namespace plum
