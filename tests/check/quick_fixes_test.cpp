#include "check/quick_fixes.h"
#include "support/printers.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

class QuickFixesOf : public testing::Test
{
protected:
    // What the line of the first finding becomes by each of its fixes, those apart that silence it.
    QStringList fixes(const QString &script, Edition edition = Edition::One, qsizetype which = 0)
    {
        const QStringList lines = script.split(edition == Edition::One ? u"\r\n"_s : u"\n"_s);
        Findings findings = check.check(script.toUtf8());
        findings.removeIf([](const Finding &finding) { return finding.rule == u"old-edition"_s; });
        QStringList texts;
        if (which >= findings.size())
            return {u"no finding"_s};
        for (const QuickFix &fix :
            QuickFixes(check, words)
                .of(findings[which], check.check(script.toUtf8()), script, lines, edition, {})) {
            if (!fix.isSuppression)
                texts += fix.text;
            else
                silenced = fix.text;
        }
        return texts;
    }

    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    const ScriptCheck check{vocabulary};
    const ScriptWords words{vocabulary};
    QString silenced;
};

TEST_F(QuickFixesOf, edition1)
{
    EXPECT_EQ(fixes(u"mouse.clik\r\n"_s), QStringList(u"mouse.click"_s));
    EXPECT_EQ(fixes(u"mosue.click\r\n"_s), QStringList(u"mouse.click"_s));
    EXPECT_EQ(fixes(u"mouse.move 1:2\r\n"_s), QStringList(u"mouse.move \"1:2\""_s));
    EXPECT_EQ(fixes(u" mouse.click\r\n"_s), QStringList(u"mouse.click"_s));
    EXPECT_EQ(fixes(u"keyboard.send a+?++(me.drag\r\n"_s), QStringList(u"keyboard.send a+?++(me.drag)"_s));
    EXPECT_TRUE(
        fixes(u"file.open \"a,b.txt\",\"\",\"\"\r\n"_s).contains(u"file.open \"a_,_b.txt\",\"\",\"\""_s));
}

TEST_F(QuickFixesOf, edition2)
{
    EXPECT_EQ(fixes(u"//edition:2\nos.tips Hello\n"_s, Edition::Two), QStringList(u"os.tips \"Hello\""_s));
    EXPECT_EQ(fixes(u"//edition:2\nos.tip \"a\"\n"_s, Edition::Two), QStringList(u"os.tips \"a\""_s));
    EXPECT_EQ(
        fixes(u"//edition:2\nset.who 1\nos.tips set.wo\n"_s, Edition::Two, 1).value(0), u"os.tips set.who"_s);
    EXPECT_EQ(fixes(u"//edition:2\nos.tips \"a\nmouse.click\n"_s, Edition::Two).value(0), u"os.tips \"a\""_s);
}

TEST_F(QuickFixesOf, convertTheLineEnds)
{
    EXPECT_EQ(fixes(u"mouse.click\nmouse.d_click\n"_s), QStringList(u"mouse.click\r\nmouse.d_click\r\n"_s));
}

TEST_F(QuickFixesOf, silenceWhatIsNoError)
{
    fixes(u"//edition:2\nwhen.start 1,is,1\n    set.b 2\nwhen.end\n"_s, Edition::Two);
    EXPECT_EQ(silenced, u"    //check:off never-read\n    set.b 2"_s);
    silenced.clear();
    fixes(u"mouse.clik\r\n"_s);
    EXPECT_EQ(silenced, QString());
}

TEST_F(QuickFixesOf, areNotOfferedWhereTheyDoNotHelp)
{
    EXPECT_EQ(fixes(u"//edition:2\nos.tips Hello world, \"x\n"_s, Edition::Two), QStringList());
}

} // namespace
} // namespace plum
