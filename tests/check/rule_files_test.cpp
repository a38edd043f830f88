// Every rule has a wrong and a right script in rules/, with what is expected written in the line above:
//
//   // expect: rule rule
//
// In a wrong script these are exactly the findings; a right one has none of its rule.
#include "check/findings/check_rules.h"
#include "check/script_check.h"
#include "support/script_bench.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

const QString rulesFolder = QStringLiteral(PLUM_TESTS_FOLDER "/check/rules");

QByteArray contentOf(const QString &name)
{
    QFile file(rulesFolder + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Findings findingsOf(const QString &name)
{
    return ScriptCheck(recording::ScriptBench().system.vocabulary()).check(contentOf(name), rulesFolder);
}

// "line:rule" for each expectation, in the order of the lines.
QStringList expectationsOf(const QString &name)
{
    QStringList expected;
    const QStringList lines = QString::fromUtf8(contentOf(name)).split(u"\n"_s);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        constexpr QLatin1StringView marker("// expect:");
        const QString line = lines[i].trimmed();
        if (!line.startsWith(marker))
            continue;
        for (const QString &rule : line.sliced(marker.size()).split(u' ', Qt::SkipEmptyParts))
            expected += u"%1:%2"_s.arg(i + 2).arg(rule);
    }
    expected.sort();
    return expected;
}

QStringList foundIn(const Findings &findings)
{
    QStringList found;
    for (const Finding &finding : findings)
        found += u"%1:%2"_s.arg(finding.line).arg(finding.rule);
    found.sort();
    return found;
}

class RuleFiles : public testing::TestWithParam<QString>
{
};

TEST_P(RuleFiles, findsWhatIsWrong)
{
    const QString wrong = GetParam() + u".wrong.wf"_s;
    ASSERT_FALSE(contentOf(wrong).isEmpty()) << "there is no such script";
    EXPECT_EQ(foundIn(findingsOf(wrong)), expectationsOf(wrong));
}

TEST_P(RuleFiles, leavesWhatIsRight)
{
    const QString right = GetParam() + u".right.wf"_s;
    ASSERT_FALSE(contentOf(right).isEmpty()) << "there is no such script";
    for (const Finding &finding : findingsOf(right))
        EXPECT_NE(finding.rule, GetParam()) << finding.line << ": " << finding.message.toStdString();
}

// These are about bytes that the other scripts cannot hold; ScriptText's own tests have them.
bool isAboutBytes(QStringView rule)
{
    return rule == u"lf-line-ends" || rule == u"mixed-line-ends" || rule == u"encoding" || rule == u"edition";
}

QStringList rulesWithFiles()
{
    QStringList ids;
    for (const CheckRule &rule : checkRules()) {
        if (!isAboutBytes(rule.id))
            ids += rule.id.toString();
    }
    return ids;
}

INSTANTIATE_TEST_SUITE_P(All, RuleFiles, testing::ValuesIn(rulesWithFiles()),
    [](const testing::TestParamInfo<QString> &info) { return QString(info.param).replace(u'-', u'_').toStdString(); });

} // namespace
} // namespace plum
