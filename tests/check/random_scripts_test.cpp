// Scripts without a mistake are left alone: no error, and a warning in a thousand lines at most.
#include "check/random_scripts.h"
#include "check/script_check.h"
#include "engine/run_time_error.h"
#include "support/manual_examples.h"

#include <gtest/gtest.h>

#include <iostream>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

constexpr int scripts = 10'000;
// Every one of so many is run, too: what runs into an error would not be correct.
constexpr int runEach = 50;

QString sayingOf(const QStringList &script, const Finding &finding)
{
    return u"%1: %2 [%3]"_s.arg(script[finding.line - 1], finding.message, finding.rule);
}

// The error that ends a run of the script; empty without one.
QString errorOf(QStringList script)
{
    for (QString &line : script) {
        if (line.startsWith("file.save"_L1))
            line = u"//"_s;
    }
    recording::ScriptBench bench;
    bench.launcher.keywordBox = u"x a,b,c"_s;
    try {
        bench.runKeepingVariables(script);
    } catch (const RunTimeError &error) {
        return script[error.line().value_or(0)] + u": "_s + error.description();
    }
    return {};
}

TEST(RandomScripts, withoutAMistakeAreLeftAlone)
{
    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    const ScriptCheck check(vocabulary);
    test::RandomScripts random(vocabulary, 1);
    qint64 lines = 0;
    QStringList errors;
    QStringList warnings;
    QStringList failures;
    for (int i = 0; i < scripts; ++i) {
        const QStringList script = random.next();
        lines += script.size();
        for (const Finding &finding : check.check(script.join(u"\r\n"_s).toUtf8() + "\r\n")) {
            if (finding.severity == Severity::Error)
                errors += sayingOf(script, finding);
            else if (finding.severity == Severity::Warning)
                warnings += sayingOf(script, finding);
        }
        if (const QString error = i % runEach == 0 ? errorOf(script) : QString(); !error.isEmpty())
            failures += error;
    }
    std::cout << scripts << " scripts, " << lines << " lines, " << warnings.size() << " warnings\n";
    EXPECT_EQ(errors.first(std::min<qsizetype>(errors.size(), 20)), QStringList());
    EXPECT_EQ(failures, QStringList());
    EXPECT_LT(warnings.size() * 1000, lines)
        << warnings.first(std::min<qsizetype>(warnings.size(), 40)).join(u'\n').toStdString();
}

TEST(RandomScripts, ofTheManualHaveNoError)
{
    const ScriptCheck check(recording::ScriptBench().system.vocabulary());
    QStringList errors;
    qsizetype lines = 0;
    QStringList warnings;
    for (const recording::ManualExample &example : recording::manualExamples()) {
        if (example.isError)
            continue;
        lines += example.script.size();
        for (const Finding &finding : check.check(example.script.join(u"\r\n"_s).toUtf8() + "\r\n")) {
            if (finding.severity == Severity::Error)
                errors += sayingOf(example.script, finding);
            else if (finding.severity == Severity::Warning)
                warnings += sayingOf(example.script, finding);
        }
    }
    std::cout << "manual: " << lines << " lines, " << warnings.size() << " warnings\n"
              << warnings.join(u'\n').toStdString() << '\n';
    EXPECT_EQ(errors, QStringList());
}

} // namespace
} // namespace plum
