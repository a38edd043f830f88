#include "check/script_check.h"
#include "check/script_text.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

QStringList rulesOf(const QByteArray &script)
{
    QStringList rules;
    for (const Finding &finding : ScriptText::read(script).findings)
        rules += u"%1:%2:%3"_s.arg(finding.line).arg(finding.column).arg(finding.rule);
    return rules;
}

TEST(ScriptText, splitsAtCrLfAndAtCr)
{
    EXPECT_EQ(ScriptText::read("a\r\nb\rc").lines, QStringList({u"a"_s, u"b"_s, u"c"_s}));
}

TEST(ScriptText, saysThatBareLineFeedsMakeOneLine)
{
    EXPECT_EQ(rulesOf("//guide:x\nmouse.click\n"), QStringList(u"1:1:lf-line-ends"_s));
    EXPECT_EQ(rulesOf("mouse.click\r\n"), QStringList());
}

TEST(ScriptText, saysWhereALineFeedIsMixedIn)
{
    EXPECT_EQ(rulesOf("a.b\r\nc.d\ne.f\r\n"), QStringList(u"2:4:mixed-line-ends"_s));
}

TEST(ScriptText, saysThatAFileIsNotUtf8)
{
    EXPECT_EQ(rulesOf("os.tips \"\xC4\xE3\"\r\n"), QStringList(u"1:1:encoding"_s));
}

TEST(ScriptText, hintsAtCharactersThatWindowsReadsOtherwise)
{
    EXPECT_EQ(rulesOf("os.tips \"\xC3\xA9\"\r\n"), QStringList(u"1:10:encoding"_s));
    EXPECT_EQ(rulesOf("\xEF\xBB\xBFos.tips \"\xC3\xA9\"\r\n"), QStringList());
    EXPECT_EQ(rulesOf("//\xC3\xA9\r\n"), QStringList());
}

TEST(ScriptText, readsTheEditionFromTheFirstLineOrBehindAGuide)
{
    EXPECT_EQ(ScriptText::read("//edition:2\nset.a 1\n").edition.number, 2);
    EXPECT_EQ(ScriptText::read("//guide:x\r\n//edition:2\r\n").edition.number, 2);
    EXPECT_EQ(ScriptText::read("//edition:3").edition.number, 3);
    EXPECT_EQ(ScriptText::read(" //edition:2\r\n").edition.number, 1);
    EXPECT_EQ(ScriptText::read("//edition:2 \r\n").edition.number, 1);
    EXPECT_EQ(ScriptText::read("mouse.click\r\n//edition:2\r\n").edition.number, 1);
}

TEST(ScriptText, endsLinesOfEdition2InLineFeedsToo)
{
    const ScriptText text = ScriptText::read("//edition:2\nset.a 1\r\nset.b 2");
    EXPECT_EQ(text.lines, QStringList({u"//edition:2"_s, u"set.a 1"_s, u"set.b 2"_s}));
    EXPECT_TRUE(text.findings.isEmpty());
}

} // namespace
} // namespace plum
