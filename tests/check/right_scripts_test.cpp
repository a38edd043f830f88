// Scripts without a mistake are left alone: no error, and a warning in a thousand lines at most.
#include "check/random_edition2_scripts.h"
#include "check/random_scripts.h"
#include "check/script_check.h"
#include "engine/run_time_error.h"
#include "support/manual_examples.h"

#include <QDir>
#include <QFile>

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

// What is said of scripts that are right, but for hints.
struct Said
{
    qsizetype lines = 0;
    QStringList errors;
    QStringList warnings;

    // No error, and fewer than one warning in a thousand lines.
    void expectNothing() const
    {
        std::cout << lines << " lines, " << warnings.size() << " warnings\n";
        EXPECT_EQ(errors.first(std::min<qsizetype>(errors.size(), 20)), QStringList());
        EXPECT_LT(warnings.size() * 1000, lines)
            << warnings.first(std::min<qsizetype>(warnings.size(), 40)).join(u'\n').toStdString();
    }

    void take(const QStringList &script, const Findings &findings)
    {
        lines += script.size();
        for (const Finding &finding : findings) {
            if (finding.severity == Severity::Error)
                errors += sayingOf(script, finding);
            else if (finding.severity == Severity::Warning)
                warnings += sayingOf(script, finding);
        }
    }
};

TEST(RightScripts, atRandomAreLeftAlone)
{
    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    const ScriptCheck check(vocabulary);
    test::RandomScripts random(vocabulary, 1);
    Said said;
    QStringList failures;
    for (int i = 0; i < scripts; ++i) {
        const QStringList script = random.next();
        said.take(script, check.check(script.join(u"\r\n"_s).toUtf8() + "\r\n"));
        if (const QString error = i % runEach == 0 ? errorOf(script) : QString(); !error.isEmpty())
            failures += error;
    }
    said.expectNothing();
    EXPECT_EQ(failures, QStringList());
}

// The guard's tests run such scripts.
TEST(RightScripts, ofEdition2AtRandomAreLeftAlone)
{
    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    const ScriptCheck check(vocabulary);
    test::RandomEdition2Scripts random(vocabulary, 1);
    Said said;
    for (int i = 0; i < scripts; ++i) {
        const QStringList script = random.next();
        said.take(script, check.check(script.join(u'\n').toUtf8() + "\n"));
    }
    said.expectNothing();
}

TEST(RightScripts, ofTheManualHaveNoErrorAndOnlyTheWarningsThatAreMeant)
{
    const ScriptCheck check(recording::ScriptBench().system.vocabulary());
    Said said;
    for (const recording::ManualExample &example : recording::manualExamples()) {
        if (!example.isError)
            said.take(example.script, check.check(example.script.join(u"\r\n"_s).toUtf8() + "\r\n"));
    }
    ASSERT_GT(said.lines, 100);
    EXPECT_EQ(said.errors, QStringList());
    // The manual shows what becomes of an unquoted word and of a variable that nobody has set.
    EXPECT_EQ(said.warnings.size(), 2) << said.warnings.join(u'\n').toStdString();
}

TEST(RightScripts, ofTheManualsEdition2HaveNothingSaidOfThem)
{
    const ScriptCheck check(recording::ScriptBench().system.vocabulary());
    Said said;
    for (const recording::ManualExample &example :
        recording::manualExamples(recording::ManualPage::Edition2)) {
        if (example.error.isEmpty())
            said.take(example.script, check.check(example.script.join(u'\n').toUtf8() + "\n"));
    }
    ASSERT_GT(said.lines, 60);
    said.expectNothing();
}

TEST(RightScripts, ofTheStarterAppsHaveNeitherErrorsNorWarnings)
{
    const ScriptCheck check(recording::ScriptBench().system.vocabulary());
    const QDir apps(QStringLiteral(PLUM_APPS_FOLDER));
    Said said;
    for (const QString &name : apps.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile script(apps.filePath(name + u"/main.wf"_s));
        ASSERT_TRUE(script.open(QIODevice::ReadOnly)) << name.toStdString();
        const QByteArray content = script.readAll();
        said.take(QString::fromUtf8(content).split(u"\r\n"_s), check.check(content, apps.filePath(name)));
    }
    ASSERT_GT(said.lines, 40);
    EXPECT_EQ(said.errors, QStringList());
    EXPECT_EQ(said.warnings, QStringList());
}

} // namespace
} // namespace plum
