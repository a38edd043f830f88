#include "commands/key_names.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(KeyNames, TheTableHoldsItsRowsInOrder)
{
    QStringList rows;
    for (const KeyName &key : keycodeasc())
        rows += u"%1=%2%3"_s.arg(key.name).arg(key.virtualKey).arg(key.returned ? u""_s : u"-"_s);
    const QString expected
        = u"a=65 b=66 c=67 d=68 e=69 f=70 g=71 h=72 i=73 j=74 k=75 l=76 m=77 n=78 o=79 p=80 "
          "q=81 r=82 s=83 t=84 u=85 v=86 w=87 x=88 y=89 =90 shift=16 ctrl=17 alt=18 win=91 "
          "enter=13 esc=27- f1=112- f2=113- f3=114- f4=115- f5=116- f6=117- f7=118- f8=119- "
          "f9=120- f10=121- f11=122- f12=123- tab=9- capslock=20- BACKSPACE=8- left=37- "
          "up=38- right=39- down=40- print=44-"_s;
    EXPECT_EQ(rows, expected.split(u' '));
}

TEST(KeyNames, LettersFromAToYAreTheirUpperCaseCodes)
{
    for (char16_t letter = u'a'; letter <= u'y'; ++letter)
        EXPECT_EQ(virtualKeyOf(QString(QChar(letter))), letter - u'a' + 65);
}

TEST(KeyNames, TheLetterZYieldsNothingAndTheEmptyNameItsCode)
{
    EXPECT_EQ(virtualKeyOf(u"z"_s), 0);
    EXPECT_EQ(virtualKeyOf(u"Z"_s), 0);
    EXPECT_EQ(virtualKeyOf(QString()), 90);
}

TEST(KeyNames, NamesOfKeysThatAreReturned)
{
    EXPECT_EQ(virtualKeyOf(u"shift"_s), 16);
    EXPECT_EQ(virtualKeyOf(u"ctrl"_s), 17);
    EXPECT_EQ(virtualKeyOf(u"alt"_s), 18);
    EXPECT_EQ(virtualKeyOf(u"win"_s), 91);
    EXPECT_EQ(virtualKeyOf(u"enter"_s), 13);
}

TEST(KeyNames, RecognisedNamesFromEscOnYieldNothing)
{
    for (const QString &name : {u"esc"_s, u"f1"_s, u"f12"_s, u"tab"_s, u"capslock"_s, u"left"_s, u"up"_s,
             u"right"_s, u"down"_s, u"print"_s})
        EXPECT_EQ(virtualKeyOf(name), 0) << name.toStdString();
}

TEST(KeyNames, BackspaceNeverMatches)
{
    EXPECT_EQ(virtualKeyOf(u"BACKSPACE"_s), 0);
    EXPECT_EQ(virtualKeyOf(u"backspace"_s), 0);
}

TEST(KeyNames, LetterCaseDoesNotMatter)
{
    EXPECT_EQ(virtualKeyOf(u"Shift"_s), 16);
    EXPECT_EQ(virtualKeyOf(u"CTRL"_s), 17);
    EXPECT_EQ(virtualKeyOf(u"A"_s), 65);
}

TEST(KeyNames, OtherKeysHaveNoEntry)
{
    for (const QString &name :
        {u"1"_s, u"0"_s, u" "_s, u"space"_s, u"."_s, u"delete"_s, u" a"_s, u"ab"_s, u"\u00e4"_s, u"f13"_s})
        EXPECT_EQ(virtualKeyOf(name), 0) << name.toStdString();
}
