#include "engine/text_functions.h"
#include "support/printers.h"
#include "support/raised_by.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::raisedBy;

TEST(CountOf, CountsWithoutOverlap)
{
    EXPECT_EQ(CountOf(u"\"", u"\"a,b\""), 2);
    EXPECT_EQ(CountOf(u"aa", u"aaaaa"), 2);
    EXPECT_EQ(CountOf(u"a", u""), 0);
    EXPECT_EQ(CountOf(u"A", u"aaa"), 0);
}

TEST(CountOf, MoreThanSixteenBitsOverflow)
{
    EXPECT_EQ(CountOf(u"a", QString(32767, u'a')), 32767);
    EXPECT_EQ(raisedBy([] { CountOf(u"a", QString(32768, u'a')); }), RunTimeError::Overflow);
}

TEST(CountOf, NothingToFindIsADivisionByZero)
{
    EXPECT_EQ(raisedBy([] { CountOf(u"", u"abc"); }), RunTimeError::DivisionByZero);
}

TEST(AfterFirstBlank, IsAllAfterTheFirstBlank)
{
    EXPECT_EQ(AfterFirstBlank(u"mail Ann,Bob"_s), u"Ann,Bob"_s);
    EXPECT_EQ(AfterFirstBlank(u"mail  two blanks"_s), u" two blanks"_s);
    EXPECT_EQ(AfterFirstBlank(u" x"_s), u"x"_s);
    EXPECT_EQ(AfterFirstBlank(u"mail "_s), QString());
    EXPECT_EQ(AfterFirstBlank(u"mail"_s), QString());
    EXPECT_EQ(AfterFirstBlank(u"mail\ttab"_s), QString());
    EXPECT_EQ(AfterFirstBlank(QString()), QString());
}

TEST(ParentPath, CutsAtTheLastSeparator)
{
    QString path = u"C:\\apps\\mail\\main.wf"_s;
    EXPECT_EQ(ParentPath(path, ParentPathMode::WithoutSeparator), u"C:\\apps\\mail"_s);
    EXPECT_EQ(ParentPath(path, ParentPathMode::WithSeparator), u"C:\\apps\\mail\\"_s);
}

TEST(ParentPath, TurnsSlashesInTheCallersPathToo)
{
    QString path = u"/home/ann\\apps/main.wf"_s;
    EXPECT_EQ(ParentPath(path, ParentPathMode::WithoutSeparator), u"\\home\\ann\\apps"_s);
    EXPECT_EQ(path, u"\\home\\ann\\apps\\main.wf"_s);
}

TEST(ParentPath, WithoutASeparatorIsEmpty)
{
    QString path = u"main.wf"_s;
    EXPECT_EQ(ParentPath(path, ParentPathMode::WithoutSeparator), QString());
    EXPECT_EQ(ParentPath(path, ParentPathMode::WithSeparator), QString());
    path = u"\\main.wf"_s;
    EXPECT_EQ(ParentPath(path, ParentPathMode::WithoutSeparator), QString());
    EXPECT_EQ(ParentPath(path, ParentPathMode::WithSeparator), u"\\"_s);
}

TEST(Piece, IsTheFieldAsWritten)
{
    EXPECT_EQ(Piece(u"10:20"_s, u":"_s, 0), u"10"_s);
    EXPECT_EQ(Piece(u"10:20"_s, u":"_s, 1), u"20"_s);
    EXPECT_EQ(Piece(u"\"a\",set.b"_s, u","_s, 1), u"set.b"_s);
    EXPECT_EQ(Piece(u"a@@@b"_s, u"@@@"_s, 1), u"b"_s);
    EXPECT_EQ(Piece(u":"_s, u":"_s, 1), QString());
}

TEST(Piece, WithoutTheSeparatorIsTheWholeTextForEveryIndex)
{
    EXPECT_EQ(Piece(u"100"_s, u":"_s, 0), u"100"_s);
    EXPECT_EQ(Piece(u"100"_s, u":"_s, 7), u"100"_s);
    EXPECT_EQ(Piece(QString(), u":"_s, 3), QString());
}

TEST(Piece, BeyondTheFieldsIsASubscriptError)
{
    EXPECT_EQ(raisedBy([] { Piece(u"a:b"_s, u":"_s, 2); }), RunTimeError::SubscriptOutOfRange);
    EXPECT_EQ(raisedBy([] { Piece(u"a:b"_s, u":"_s, -1); }), RunTimeError::SubscriptOutOfRange);
}

TEST(Split, TheEmptyTextHasNoPieces)
{
    EXPECT_EQ(split(QString(), u","_s), QStringList());
    EXPECT_EQ(split(QString(), QString()), QStringList());
    EXPECT_EQ(split(u","_s, u","_s), (QStringList{QString(), QString()}));
}

TEST(Split, TheEmptySeparatorLeavesOnePiece)
{
    EXPECT_EQ(split(u"a,b"_s, QString()), QStringList{u"a,b"_s});
}

namespace {

QString replaced(const QString &source, const QString &find, const QString &with, qint32 start = 1,
    qint32 count = -1, Qt::CaseSensitivity match = Qt::CaseSensitive)
{
    return replaceFrom(source, find, with, start, count, match);
}

} // namespace

TEST(ReplaceFrom, ReplacesAllOrAsManyAsAsked)
{
    EXPECT_EQ(replaced(u"a-b-c"_s, u"-"_s, u"+"_s), u"a+b+c"_s);
    EXPECT_EQ(replaced(u"a-b-c"_s, u"-"_s, u"+"_s, 1, 1), u"a+b-c"_s);
    EXPECT_EQ(replaced(u"a-b-c"_s, u"-"_s, u"+"_s, 1, 9), u"a+b+c"_s);
    EXPECT_EQ(replaced(u"a-b-c"_s, u"-"_s, u"+"_s, 1, 0), u"a-b-c"_s);
    EXPECT_EQ(replaced(u"a-b"_s, u"-"_s, QString()), u"ab"_s);
}

TEST(ReplaceFrom, DropsWhatStandsBeforeTheStart)
{
    EXPECT_EQ(replaced(u"abcabc"_s, u"a"_s, u"x"_s, 3), u"cxbc"_s);
    EXPECT_EQ(replaced(u"abc"_s, u"c"_s, u"x"_s, 3), u"x"_s);
    EXPECT_EQ(replaced(u"abc"_s, u"c"_s, u"x"_s, 4), QString());
    EXPECT_EQ(replaced(u"abcabc"_s, u"a"_s, u"x"_s, 2, 0), u"bcabc"_s);
}

TEST(ReplaceFrom, DoesNotReplaceInsideAReplacement)
{
    EXPECT_EQ(replaced(u"aaa"_s, u"a"_s, u"aa"_s), u"aaaaaa"_s);
    EXPECT_EQ(replaced(u"aaaa"_s, u"aa"_s, u"a"_s), u"aa"_s);
}

TEST(ReplaceFrom, TellsLetterCaseApartUnlessAskedNotTo)
{
    EXPECT_EQ(replaced(u"Hello"_s, u"L"_s, u"_"_s), u"Hello"_s);
    EXPECT_EQ(replaced(u"Hello"_s, u"L"_s, u"_"_s, 1, -1, Qt::CaseInsensitive), u"He__o"_s);
}

TEST(ReplaceFrom, NothingToFindLeavesTheText)
{
    EXPECT_EQ(replaced(u"abc"_s, QString(), u"x"_s), u"abc"_s);
    EXPECT_EQ(replaced(QString(), u"a"_s, u"x"_s), QString());
}

TEST(ReplaceFrom, AnImpossibleStartOrCountIsAnInvalidCall)
{
    EXPECT_EQ(raisedBy([] { replaced(u"abc"_s, u"a"_s, u"x"_s, 0); }), RunTimeError::InvalidProcedureCall);
    EXPECT_EQ(
        raisedBy([] { replaced(u"abc"_s, u"a"_s, u"x"_s, 1, -2); }), RunTimeError::InvalidProcedureCall);
}
