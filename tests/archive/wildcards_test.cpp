#include "archive/wildcards.h"

#include <QString>
#include <gtest/gtest.h>

namespace {

struct Case
{
    QStringView text;
    QStringView pattern;
    bool matches;
};

} // namespace

TEST(Wildcards, MatchTheWholeText)
{
    constexpr std::array cases{
        Case{u"", u"", true},
        Case{u"a", u"", false},
        Case{u"", u"*", true},
        Case{u"abc", u"*", true},
        Case{u"abc", u"a*c", true},
        Case{u"abc", u"a*b", false},
        Case{u"abcabc", u"*b*bc", true},
        Case{u"abc", u"a?c", true},
        Case{u"ac", u"a?c", false},
        Case{u"a7", u"a#", true},
        Case{u"ax", u"a#", false},
        Case{u"a\\b", u"a*b", true},
        Case{u"A", u"a", false},
        Case{u"b", u"[a-c]", true},
        Case{u"d", u"[a-c]", false},
        Case{u"d", u"[!a-c]", true},
        Case{u"b", u"[!a-c]", false},
        Case{u"-", u"[-a]", true},
        Case{u"-", u"[a-]", true},
        Case{u"!", u"[!]", true},
        Case{u"*", u"[*]", true},
        Case{u"?x", u"[?]x", true},
        Case{u"ab", u"a[]b", true},
        Case{u"a]", u"a]", true},
        Case{u"[", u"[[]", true},
        Case{u"e7", u"[a-cx-z!e][0-9]", true},
    };
    for (const Case &one : cases) {
        EXPECT_EQ(plum::matchesWildcards(one.text, one.pattern), std::optional(one.matches))
            << one.text.toLatin1().constData() << " " << one.pattern.toLatin1().constData();
    }
}

TEST(Wildcards, KnowWhatIsNoPattern)
{
    EXPECT_EQ(plum::matchesWildcards(u"a", u"[a"), std::nullopt);
    EXPECT_EQ(plum::matchesWildcards(u"a", u"[z-a]"), std::nullopt);
}

TEST(Wildcards, TakeNoLongerForManyStars)
{
    const QString text(20000, u'a');
    const QString pattern = QStringLiteral("*a").repeated(200) + u'b';
    EXPECT_EQ(plum::matchesWildcards(text, pattern), std::optional(false));
}
