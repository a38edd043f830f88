#include "engine/argument_reader.h"
#include "support/raised_by.h"
#include "support/script_bench.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

namespace {

class ArgumentReaderTest : public testing::Test
{
protected:
    QString arg(const QString &text, int index = 0, const QString &separator = u","_s,
        UnknownVariable unknown = UnknownVariable::IsItsName)
    {
        return bench.reader.GetArg(text, separator, index, unknown);
    }
    QString eval(const QString &piece, UnknownVariable unknown = UnknownVariable::IsItsName)
    {
        return bench.reader.EvalArg(piece, unknown);
    }
    QString expand(const QString &token, UnknownVariable unknown = UnknownVariable::IsItsName)
    {
        return bench.reader.ExpandVar(token, unknown);
    }
    void set(const QString &name, const QString &value) { bench.state.vardict.SetVar(name, value); }

    recording::ScriptBench bench;
};

using GetArg = ArgumentReaderTest;
using EvalArg = ArgumentReaderTest;
using Templates = ArgumentReaderTest;
using ExpandVar = ArgumentReaderTest;

} // namespace

TEST_F(GetArg, ATextQuotedAsAWholeIsOneArgumentForEveryIndex)
{
    EXPECT_EQ(arg(u"\"a,b\""_s, 0), u"a,b"_s);
    EXPECT_EQ(arg(u"\"a,b\""_s, 1), u"a,b"_s);
    EXPECT_EQ(arg(u"\"a,b\""_s, 99), u"a,b"_s);
}

TEST_F(GetArg, FourQuotesMakeTwoArguments)
{
    EXPECT_EQ(arg(u"\"a\",\"b\""_s, 0), u"a"_s);
    EXPECT_EQ(arg(u"\"a\",\"b\""_s, 1), u"b"_s);
}

TEST_F(GetArg, QuotesDoNotProtectASeparatorAmongSeveralPieces)
{
    EXPECT_EQ(arg(u"\"_,\",\"b\""_s, 2), u"b"_s);
    // Half a quoted piece is no literal, and without "." it is nothing.
    EXPECT_EQ(arg(u"\"a,b\",\"c\""_s, 0), QString());
}

TEST_F(GetArg, OnePieceAnswersEveryIndex)
{
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(arg(u"set.a"_s, 0), u"1"_s);
    EXPECT_EQ(arg(u"set.a"_s, 5), u"1"_s);
    EXPECT_EQ(arg(QString(), 0), QString());
    EXPECT_EQ(arg(QString(), 3), QString());
}

TEST_F(GetArg, BeyondThePiecesIsASubscriptError)
{
    EXPECT_EQ(raisedBy([&] { arg(u"\"a\",\"b\""_s, 2); }), RunTimeError::SubscriptOutOfRange);
    EXPECT_EQ(raisedBy([&] { arg(u"\"a\",\"b\""_s, -1); }), RunTimeError::SubscriptOutOfRange);
}

TEST_F(GetArg, TheEmptySeparatorTakesTheWholeText)
{
    EXPECT_EQ(arg(u"\"a\",\"b\""_s, 0, QString()), u"a\",\"b"_s);
    EXPECT_EQ(arg(u"x,y"_s, 0, QString()), QString());
    EXPECT_EQ(arg(QString(), 0, QString()), QString());
}

TEST_F(GetArg, TheEmptySeparatorCountsAsContained)
{
    EXPECT_EQ(raisedBy([&] { arg(u"set.a"_s, 1, QString()); }), RunTimeError::SubscriptOutOfRange);
}

TEST_F(GetArg, OtherSeparatorsSplitToo)
{
    EXPECT_EQ(arg(u"\"500\":\"x\""_s, 0, u":"_s), u"500"_s);
    EXPECT_EQ(arg(u"\"a:b\""_s, 0, u":"_s), u"a:b"_s);
}

TEST_F(GetArg, AnEscapedCommaIsRestoredAfterTheSplit)
{
    EXPECT_EQ(arg(u"\"atarnwick_dou_b\",\"c\""_s, 0), u"a,b"_s);
    EXPECT_EQ(arg(u"\"atarnwick_dou_b\",\"c\""_s, 1), u"c"_s);
    EXPECT_EQ(arg(u"a.tarnwick_dou_b,c"_s, 0), u"a.,b"_s);
}

TEST_F(GetArg, MoreQuotesThanSixteenBitsCountOverflow)
{
    EXPECT_EQ(raisedBy([&] { arg(QString(40'000, u'"')); }), RunTimeError::Overflow);
}

TEST_F(EvalArg, AnEmptyPieceIsEmpty)
{
    EXPECT_EQ(eval(QString()), QString());
}

TEST_F(EvalArg, AQuotedPieceIsNotExpanded)
{
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(eval(u"\"set.a\""_s), u"set.a"_s);
    EXPECT_EQ(eval(u"\"+?+(set.a)\""_s), u"+?+(set.a)"_s);
    EXPECT_EQ(eval(u"\"\""_s), QString());
    EXPECT_EQ(eval(u"\" x \""_s), u" x "_s);
    EXPECT_EQ(eval(u"\"a\"b\""_s), u"a\"b"_s);
}

TEST_F(EvalArg, ALoneQuoteLeavesNothing)
{
    EXPECT_EQ(eval(u"\""_s), QString());
}

TEST_F(EvalArg, AnUnquotedPieceWithoutADotIsEmpty)
{
    EXPECT_EQ(eval(u"x"_s), QString());
    EXPECT_EQ(eval(u"500"_s), QString());
    EXPECT_EQ(eval(u" \"x\""_s), QString());
    EXPECT_EQ(eval(u"(x)"_s), QString());
}

TEST_F(EvalArg, CommasAreRestoredInVariablesToo)
{
    set(u"a"_s, u"1tarnwick_dou_2"_s);
    EXPECT_EQ(eval(u"set.a"_s), u"1,2"_s);
    EXPECT_EQ(eval(u"+?+!+(set.a)"_s), u"1,2!"_s);
}

TEST_F(Templates, EachSlotTakesTheNextName)
{
    set(u"name"_s, u"Ann"_s);
    set(u"age"_s, u"7"_s);
    EXPECT_EQ(eval(u"Hello +?+, you are +?++(set.name+set.age)"_s), u"Hello Ann, you are 7"_s);
}

TEST_F(Templates, OneNameFillsEverySlot)
{
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(eval(u"+?+ and +?+.+(set.a)"_s), u"1 and 1."_s);
}

TEST_F(Templates, SurplusNamesAreIgnored)
{
    set(u"a"_s, u"1"_s);
    set(u"b"_s, u"2"_s);
    EXPECT_EQ(eval(u"<+?+>+(set.a+set.b)"_s), u"<1>"_s);
}

TEST_F(Templates, SurplusSlotsStay)
{
    set(u"a"_s, u"1"_s);
    set(u"b"_s, u"2"_s);
    EXPECT_EQ(eval(u"+?+ +?+ +?+.+(set.a+set.b)"_s), u"1 2 +?+."_s);
}

TEST_F(Templates, AValueThatLooksLikeASlotTakesTheNextName)
{
    set(u"a"_s, u"+?+"_s);
    set(u"b"_s, u"2"_s);
    EXPECT_EQ(eval(u"+?+ +?+.+(set.a+set.b)"_s), u"2 +?+."_s);
}

TEST_F(Templates, AValueThatLooksLikeAListCutsTheText)
{
    set(u"a"_s, u"x+(y"_s);
    EXPECT_EQ(eval(u"<+?+>+(set.a)"_s), u"<x"_s);
}

TEST_F(Templates, TheTextIsNeitherUnquotedNorExpanded)
{
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(eval(u"\"set.a\"=+?+.+(set.a)"_s), u"\"set.a\"=1."_s);
}

TEST_F(Templates, TheListEndsAtTheFirstParenthesis)
{
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(eval(u"+?+.+(set.a) tail)"_s), u"1."_s);
}

TEST_F(Templates, AnEmptyListFillsSlotsWithNothing)
{
    EXPECT_EQ(eval(u"<+?+>+()"_s), u"<>"_s);
    EXPECT_EQ(eval(u"<+?+>+(+)"_s), u"<>"_s);
}

TEST_F(Templates, UnknownNamesFollowTheFlag)
{
    EXPECT_EQ(eval(u"<+?+>+(set.b)"_s), u"<b>"_s);
    EXPECT_EQ(eval(u"<+?+>+(set.b)"_s, UnknownVariable::IsEmpty), u"<>"_s);
}

TEST_F(Templates, AParenthesisWithoutAListIsAVariable)
{
    set(u"a)"_s, u"1"_s);
    EXPECT_EQ(eval(u"set.a)"_s), u"1"_s);
}

TEST_F(Templates, ASlotThatTouchesTheListTakesItsPlus)
{
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(eval(u"+?+(set.a)"_s), u"1(set.a)"_s);
}

TEST_F(Templates, TenThousandNestedParentheses)
{
    const QString open = QString(u"+("_s).repeated(10'000);
    EXPECT_EQ(eval(u"x+?+"_s + open + QString(10'000, u')')), u"x"_s);
    EXPECT_EQ(eval(QString(10'000, u'(') + QString(10'000, u')')), QString());
}

TEST_F(Templates, AnArgumentMayBeATemplateAmongOthers)
{
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(arg(u"\"x\",<+?+>+(set.a),\"y\""_s, 1), u"<1>"_s);
}

TEST_F(ExpandVar, ATokenWithoutADotIsEmpty)
{
    EXPECT_EQ(expand(u"x"_s), QString());
    EXPECT_EQ(expand(QString()), QString());
}

TEST_F(ExpandVar, OtherPrefixesLeaveTheTokenAsItIs)
{
    for (const QString &token :
        {u"1.5"_s, u"a.b"_s, u".x"_s, u"."_s, u"Set.a"_s, u"OS.path_pfold"_s, u" set.a"_s})
        EXPECT_EQ(expand(token), token);
}

TEST_F(ExpandVar, SetIsTheValueOfAKnownVariable)
{
    set(u"a"_s, u"1"_s);
    set(u"a.b"_s, u"2"_s);
    set(u"empty"_s, QString());
    EXPECT_EQ(expand(u"set.a"_s), u"1"_s);
    EXPECT_EQ(expand(u"set.a.b"_s), u"2"_s);
    EXPECT_EQ(expand(u"set.empty"_s), QString());
}

TEST_F(ExpandVar, AnUnknownVariableIsItsNameOrEmptyByTheFlag)
{
    EXPECT_EQ(expand(u"set.missing"_s, UnknownVariable::IsItsName), u"missing"_s);
    EXPECT_EQ(expand(u"set.missing"_s, UnknownVariable::IsEmpty), QString());
    set(u"a"_s, u"1"_s);
    EXPECT_EQ(expand(u"set.A"_s), u"A"_s);
}

TEST_F(ExpandVar, StrRIsALineEnd)
{
    EXPECT_EQ(expand(u"str.r"_s), u"\r\n"_s);
    EXPECT_EQ(expand(u"str.n"_s), QString());
    EXPECT_EQ(expand(u"str."_s), QString());
}

TEST_F(ExpandVar, OsReadsTheClipboard)
{
    bench.platform.clipboard().content = u"copied"_s;
    EXPECT_EQ(expand(u"os.get_clipboard"_s), u"copied"_s);
}

TEST_F(ExpandVar, OsKnowsTheScriptsFolders)
{
    bench.state.runctx[0] = u"C:\\plum/config\\apps\\mail\\main.wf"_s;
    EXPECT_EQ(expand(u"os.path_pfold"_s), u"C:\\plum\\config\\apps\\mail"_s);
    EXPECT_EQ(expand(u"os.path_ppfold"_s), u"C:\\plum\\config\\apps"_s);
    EXPECT_EQ(bench.state.runctx[0], u"C:\\plum/config\\apps\\mail\\main.wf"_s);
    bench.state.runctx[0] = u"main.wf"_s;
    EXPECT_EQ(expand(u"os.path_pfold"_s), QString());
    EXPECT_EQ(expand(u"os.path_ppfold"_s), QString());
}

TEST_F(ExpandVar, OsKnowsThePackage)
{
    bench.state.currentKeyword = u"mail"_s;
    EXPECT_EQ(expand(u"os.path_package"_s), u"C:\\plum\\config\\apps\\mail"_s);
    EXPECT_EQ(expand(u"os.path_package_name"_s), u"mail"_s);
}

TEST_F(ExpandVar, TheDesktopsPathIsCutAtTwoHundredCharacters)
{
    bench.platform.shell().desktop = QString(250, u'd');
    EXPECT_EQ(expand(u"os.path_desktop"_s), QString(200, u'd'));
    bench.platform.shell().desktop = u"C:\\Desktop"_s;
    EXPECT_EQ(expand(u"os.path_desktop"_s), u"C:\\Desktop"_s);
}

TEST_F(ExpandVar, NamesAPrefixDoesNotHaveAreEmpty)
{
    for (const QString &token : {u"os.nothing"_s, u"os."_s, u"os.Path_pfold"_s, u"me.nothing"_s, u"me."_s,
             u"mouse.x"_s, u"mouse."_s, u"me.enter_inpu"_s})
        EXPECT_EQ(expand(token), QString()) << token.toStdString();
}

TEST_F(ExpandVar, MeReadsTheInputBoxAndTheDroppedPath)
{
    bench.launcher.inputEntry = u"typed"_s;
    bench.state.droppedPath = u"C:\\x.txt"_s;
    EXPECT_EQ(expand(u"me.text_input"_s), u"typed"_s);
    EXPECT_EQ(expand(u"me.drag"_s), u"C:\\x.txt"_s);
}

TEST_F(ExpandVar, MeDragTextJoinsTheDroppedFilesLines)
{
    QTemporaryDir folder;
    bench.state.droppedPath = folder.filePath(u"x.txt"_s);
    EXPECT_EQ(expand(u"me.drag_text"_s), QString());
    QFile file(bench.state.droppedPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a\r\nb\r\n");
    file.close();
    EXPECT_EQ(expand(u"me.drag_text"_s), u"ab"_s);
}

TEST_F(ExpandVar, MeEnterInputIsWhatWasTypedAfterTheKeyword)
{
    bench.launcher.keywordBox = u"mail Ann,Bob"_s;
    EXPECT_EQ(expand(u"me.enter_input"_s), u"Ann,Bob"_s);
    EXPECT_EQ(expand(u"me.enter_input_1"_s), u"Ann"_s);
    EXPECT_EQ(expand(u"me.enter_input_2"_s), u"Bob"_s);
    EXPECT_EQ(expand(u"me.enter_input_x_2"_s), u"Bob"_s);
}

TEST_F(ExpandVar, MeEnterInputPiecesThatAreNotThereAreEmpty)
{
    bench.launcher.keywordBox = u"mail Ann,Bob"_s;
    for (const QString &name :
        {u"_3"_s, u"_0"_s, u"_-1"_s, u"_"_s, u"_x"_s, u"_input"_s, u"_99999"_s, u"s"_s})
        EXPECT_EQ(expand(u"me.enter_input"_s + name), QString()) << name.toStdString();
    bench.launcher.keywordBox = u"mail"_s;
    EXPECT_EQ(expand(u"me.enter_input"_s), QString());
    EXPECT_EQ(expand(u"me.enter_input_1"_s), QString());
    bench.launcher.keywordBox = u"mail Ann"_s;
    EXPECT_EQ(expand(u"me.enter_input_1"_s), u"Ann"_s);
}

TEST_F(ExpandVar, MouseIsThePointersPosition)
{
    bench.platform.pointer().at = QPoint(120, 45);
    EXPECT_EQ(expand(u"mouse.xy"_s), u"120:45"_s);
}
