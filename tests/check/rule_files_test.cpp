// Every rule has a wrong and a right script in rules/, with what is expected written in the line above, or,
// where that is no place for it, with the number of its line:
//
//   // expect: rule rule
//   // expect 1: rule
//
// In a wrong script these are exactly the findings, but for the hint at edition 2; a right one has none of
// its rule.
#include "check/findings/check_rules.h"
#include "check/script_check.h"
#include "support/chinese_session.h"
#include "support/script_bench.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
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

// `name` is below the folder of the rules.
Findings findingsOf(const QString &name)
{
    return ScriptCheck(recording::ScriptBench().system.vocabulary()).check(contentOf(name), rulesFolder);
}

// "line:rule" for each expectation, in the order of the lines.
QStringList expectationsOf(const QString &name)
{
    static const QRegularExpression pattern(u"\\A// expect(?: ([0-9]+))?:(.*)"_s);
    QStringList expected;
    const QStringList lines = QString::fromLatin1(contentOf(name)).split(u"\n"_s);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch match = pattern.match(lines[i].trimmed());
        if (!match.hasMatch())
            continue;
        const qsizetype line = match.hasCaptured(1) ? match.captured(1).toInt() : i + 2;
        for (const QString &rule : match.captured(2).split(u' ', Qt::SkipEmptyParts))
            expected += u"%1:%2"_s.arg(line).arg(rule);
    }
    expected.sort();
    return expected;
}

QStringList foundIn(const Findings &findings, const QString &rule)
{
    QStringList found;
    for (const Finding &finding : findings) {
        if (finding.rule != "old-edition"_L1 || rule == "old-edition"_L1)
            found += u"%1:%2"_s.arg(finding.line).arg(finding.rule);
    }
    found.sort();
    return found;
}

QString severityName(Severity severity)
{
    return severity == Severity::Error  ? u"Error"_s
        : severity == Severity::Warning ? u"Warning"_s
                                        : u"Hint"_s;
}

QString withoutExpectations(const QString &script)
{
    QString kept;
    for (const QString &line : script.split(u"\r\n"_s, Qt::SkipEmptyParts)) {
        if (!line.startsWith("// expect"_L1))
            kept += line + u'\n';
    }
    return kept;
}

// Each line with all of its bytes, those that nobody sees and those beyond ASCII by their numbers.
QString bytesWithoutExpectations(const QByteArray &script)
{
    QString shown;
    bool isKept = true;
    for (qsizetype at = 0; at < script.size(); ++at) {
        if (at == 0 || script[at - 1] == '\n')
            isKept = !script.sliced(at).startsWith("// expect");
        if (!isKept)
            continue;
        const auto byte = static_cast<uchar>(script[at]);
        if (byte == '\n')
            shown += u"\\n\n"_s;
        else if (byte == '\r')
            shown += u"\\r"_s;
        else if (byte < 0x80)
            shown += QLatin1Char(script[at]);
        else
            shown += u"\\x%1"_s.arg(QString::number(byte, 16).toUpper());
    }
    return shown;
}

class RuleFiles : public testing::TestWithParam<QString>
{
};

TEST_P(RuleFiles, findsWhatIsWrong)
{
    const QString wrong = GetParam() + u".wrong.wf"_s;
    ASSERT_FALSE(contentOf(wrong).isEmpty()) << "there is no such script";
    EXPECT_EQ(foundIn(findingsOf(wrong), GetParam()), expectationsOf(wrong));
}

TEST_P(RuleFiles, leavesWhatIsRight)
{
    const QString right = GetParam() + u".right.wf"_s;
    ASSERT_FALSE(contentOf(right).isEmpty()) << "there is no such script";
    for (const Finding &finding : findingsOf(right))
        EXPECT_NE(finding.rule, GetParam()) << finding.line << ": " << finding.message.toStdString();
}

QStringList allRules()
{
    QStringList ids;
    for (const CheckRule &rule : checkRules())
        ids += rule.id.toString();
    return ids;
}

// Where and of which rule, for findings whose sentences are in different languages.
QStringList placesOf(const Findings &findings)
{
    QStringList places;
    for (const Finding &finding : findings)
        places += u"%1:%2:%3"_s.arg(finding.line).arg(finding.column).arg(finding.rule);
    return places;
}

TEST(RuleFilesInChinese, haveTheSameFindingsInChineseSentences)
{
    static const QRegularExpression chinese(u"\\p{Han}.*[。？]\\z"_s,
        QRegularExpression::UseUnicodePropertiesOption | QRegularExpression::DotMatchesEverythingOption);
    QStringList names = QDir(rulesFolder).entryList({u"*.wf"_s});
    for (const QString &name : QDir(rulesFolder + u"/../edition2"_s).entryList({u"*.wf"_s}))
        names += u"../edition2/"_s + name;
    int sentences = 0;
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        const QStringList inEnglish = placesOf(findingsOf(name));
        const test::ChineseSession session;
        const Findings findings = findingsOf(name);
        EXPECT_EQ(placesOf(findings), inEnglish);
        for (const Finding &finding : findings) {
            ++sentences;
            EXPECT_TRUE(finding.message.contains(chinese)) << finding.message.toStdString();
        }
    }
    EXPECT_GT(sentences, 100);
}

// Scripts of edition 2 with all that is to be found in them.
TEST(Edition2Files, haveTheFindingsThatStandInThem)
{
    const QString folder = u"../edition2/"_s;
    const QStringList names = QDir(rulesFolder + u'/' + folder).entryList({u"*.wf"_s});
    EXPECT_GT(names.size(), 5);
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(foundIn(findingsOf(folder + name), {}), expectationsOf(folder + name));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, RuleFiles, testing::ValuesIn(allRules()), [](const testing::TestParamInfo<QString> &rule) {
        return QString(rule.param).replace(u'-', u'_').toStdString();
    });

// The sentences, the severities and the scripts of the rules' pages are the rules' own.
TEST(RulePages, areThoseOfTheRules)
{
    QFile file(QStringLiteral(PLUM_DOCS_FOLDER "/checks.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList pages = QString::fromUtf8(file.readAll()).split(u"\n## "_s).sliced(1);
    QStringList described;
    for (const QString &page : pages)
        described += page.section(u'\n', 0, 0);
    EXPECT_EQ(described, allRules());
    for (const QString &page : pages) {
        const QString id = page.section(u'\n', 0, 0);
        SCOPED_TRACE(id.toStdString());
        const CheckRule *rule = checkRule(id);
        ASSERT_TRUE(rule);
        EXPECT_TRUE(page.contains(u"*%1.* %2"_s.arg(severityName(rule->severity), rule->title)));
        for (const auto &[caption, kind] :
            {std::pair(u"Wrong"_s, u"wrong"_s), std::pair(u"Right"_s, u"right"_s)}) {
            const QByteArray content = contentOf(u"%1.%2.wf"_s.arg(id, kind));
            // A page whose script shows nothing as it is shows its bytes.
            if (page.contains(caption + u":\n"_s)) {
                const QString script = withoutExpectations(QString::fromUtf8(content));
                EXPECT_TRUE(page.contains(u"%1:\n\n```plum-check\n%2```"_s.arg(caption, script)))
                    << script.toStdString();
            } else {
                const QString script = bytesWithoutExpectations(content);
                EXPECT_TRUE(page.contains(u"%1, by its bytes:\n\n```text\n%2```"_s.arg(caption, script)))
                    << script.toStdString();
            }
        }
    }
}

} // namespace
} // namespace plum
