#include "platform/linux/shell_words.h"

#include <gmock/gmock.h>

namespace plum {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ShellWords, blanksSeparate)
{
    EXPECT_THAT(shellWords(u"  one\ttwo \n three "_s), ElementsAre(u"one"_s, u"two"_s, u"three"_s));
}

TEST(ShellWords, nothingHasNoWords)
{
    EXPECT_THAT(shellWords(QString()), IsEmpty());
    EXPECT_THAT(shellWords(u" \t "_s), IsEmpty());
}

TEST(ShellWords, singleQuotesKeepEverything)
{
    EXPECT_THAT(shellWords(uR"(a 'b  "c" \d' e)"_s), ElementsAre(u"a"_s, uR"(b  "c" \d)"_s, u"e"_s));
}

TEST(ShellWords, doubleQuotesKeepBlanksAndSomeBackslashes)
{
    EXPECT_THAT(shellWords(uR"("a b" "C:\dir\" end" "\$x \\ y")"_s),
        ElementsAre(u"a b"_s, uR"(C:\dir" end)"_s, uR"($x \ y)"_s));
}

TEST(ShellWords, aBackslashQuotesTheNextCharacter)
{
    EXPECT_THAT(shellWords(uR"(one\ word \'x \\)"_s), ElementsAre(u"one word"_s, u"'x"_s, uR"(\)"_s));
}

TEST(ShellWords, quotesInsideAWordDoNotEndIt)
{
    EXPECT_THAT(shellWords(u"--name='John Doe'\"!\""_s), ElementsAre(u"--name=John Doe!"_s));
}

TEST(ShellWords, emptyQuotesAreAWord)
{
    EXPECT_THAT(shellWords(u"a '' \"\" b"_s), ElementsAre(u"a"_s, QString(), QString(), u"b"_s));
}

TEST(ShellWords, nothingIsExpanded)
{
    EXPECT_THAT(shellWords(u"$HOME ~ *.txt `id` $(id) a;b |c >d &"_s),
        ElementsAre(
            u"$HOME"_s, u"~"_s, u"*.txt"_s, u"`id`"_s, u"$(id)"_s, u"a;b"_s, u"|c"_s, u">d"_s, u"&"_s));
}

TEST(ShellWords, anUnclosedQuoteReachesToTheEnd)
{
    EXPECT_THAT(shellWords(u"a \"b c"_s), ElementsAre(u"a"_s, u"b c"_s));
    EXPECT_THAT(shellWords(u"a 'b c"_s), ElementsAre(u"a"_s, u"b c"_s));
    EXPECT_THAT(shellWords(uR"(a\)"_s), ElementsAre(uR"(a\)"_s));
}

} // namespace plum
