// How much of what one wrong token does is said before the run: every example of the manual and every starter
// app, with one token changed. A mutant counts when it changes what the recording backend sees, or ends in an
// error.
#include "check/script_check.h"
#include "check/script_mutations.h"
#include "engine/editions/later_edition.h"
#include "engine/editions/run_observer.h"
#include "engine/run_time_error.h"
#include "support/manual_examples.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

#include <iostream>

namespace plum {
namespace {

using namespace Qt::StringLiterals;
using recording::ExampleBench;
using recording::ManualExample;

// More waits than any of the scripts needs, and more lines.
constexpr int endlessWaits = 5000;
constexpr int endlessLines = 20'000;

struct Endless
{
};

// Ends a run that would never end, also where it does nothing but count, and knows which lines failed.
class LineWatch final : public RunObserver
{
public:
    QSet<int> failed; // lines, from 0

    void lineBegins(const RunLine &line) override
    {
        m_last = line.number - 1;
        if (++m_lines > endlessLines)
            throw Endless();
    }
    void lineEnds(LineEnd how, const QString &) override
    {
        if (how == LineEnd::Failed)
            failed += m_last;
    }
    bool wantsEveryLine() const override { return true; }

    void runBegins(const QString &) override { }
    void fieldRead(int, const QString &) override { }
    void variableSet(const QString &, const QString &) override { }
    void answered(const QString &) override { }
    void refused(const QString &) override { }
    void linesPassed(qint64) override { }

private:
    int m_lines = 0;
    int m_last = 0;
};

bool isOfEdition2(const QStringList &script)
{
    return askedEdition(script.join(u'\n').toUtf8()).number == 2;
}

struct Outcome
{
    QStringList seen; // by the backend, and the error that ended the run
    QSet<int> failed; // lines of edition 2, also those whose failure is caught

    bool operator==(const Outcome &other) const { return seen == other.seen; }
};

Outcome outcomeOf(const ManualExample &example, QStringList script)
{
    // Scripts in the wrong shape are not let loose on the files of the machine that tests them.
    script.replaceInStrings(QRegularExpression(u"^\\s*file\\.(?:save|write|move)\\b.*"_s,
                                QRegularExpression::CaseInsensitiveOption),
        u"//"_s);
    ExampleBench bench(example);
    int waits = 0;
    bench.waiter.onWait = [&waits] {
        if (++waits > endlessWaits)
            throw Endless();
    };
    LineWatch lines;
    QString end;
    try {
        if (isOfEdition2(script)) {
            bench.state.observer = &lines;
            end = bench.runToTheEnd(script);
        } else {
            bench.runKeepingVariables(script);
        }
    } catch (const RunTimeError &error) {
        end = error.description();
    } catch (const Endless &) {
        end = u"endless"_s;
    }
    bench.state.observer = nullptr;
    return {bench.happened() + QStringList(end.isEmpty() ? end : u"error "_s + end), lines.failed};
}

// The manual's examples without those that show an error, and the starter apps.
QList<ManualExample> corpus(recording::ManualPage page)
{
    QList<ManualExample> scripts;
    for (const ManualExample &example : recording::manualExamples(page)) {
        if (!example.isError && example.error.isEmpty())
            scripts += example;
    }
    const QDir apps(QStringLiteral(PLUM_APPS_FOLDER));
    for (const QString &name : apps.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(apps.filePath(name + u"/main.wf"_s));
        if (!file.open(QIODevice::ReadOnly))
            ADD_FAILURE() << "no script in " << name.toStdString();
        ManualExample app;
        app.script = QString::fromUtf8(file.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts);
        app.given = {u"typed x 6*7"_s, u"clipboard a\\b"_s, u"javascript 42"_s, u"http 200 page"_s,
            u"pointer 12 34"_s, u"window 7 100 50 300 200"_s};
        if (isOfEdition2(app.script) == (page == recording::ManualPage::Edition2))
            scripts += app;
    }
    return scripts;
}

QSet<QString> saidOf(const Findings &findings, Severity least)
{
    QSet<QString> said;
    for (const Finding &finding : findings) {
        if (finding.severity >= least)
            said += u"%1 %2 %3"_s.arg(finding.line).arg(finding.rule, finding.message);
    }
    return said;
}

struct Figures
{
    int mutants = 0;
    int effective = 0;
    int reported = 0;
    int warned = 0; // of these, by more than a hint
    QStringList falseErrors;
    QMap<QString, QStringList> silent; // by what was done
};

// An error says that its line certainly fails or does nothing.
void holdErrorsToTheirWord(const ManualExample &example, const test::Mutant &mutant, const Outcome &outcome,
    const Findings &findings, Figures &figures)
{
    if (outcome.seen.last().startsWith("error"_L1) || outcome.failed.contains(mutant.line)
        || mutant.script[mutant.line].startsWith("while"_L1)
        || mutant.script[mutant.line].startsWith("file.save"_L1))
        return;
    for (const Finding &finding : findings) {
        if (finding.severity != Severity::Error || finding.line != mutant.line + 1)
            continue;
        QStringList without = mutant.script;
        without[mutant.line] = u"//"_s;
        // The line after it may take over its arguments.
        if (mutant.line + 1 < without.size() && !without[mutant.line + 1].contains(u' '))
            return;
        if (outcomeOf(example, without) != outcome)
            figures.falseErrors += mutant.script[mutant.line] + u" -> "_s + finding.message;
        return;
    }
}

void take(const ManualExample &example, const ScriptCheck &check, const ScriptVocabulary &vocabulary,
    Figures &figures)
{
    const auto findingsOf = [&check](const QStringList &script) {
        return check.check(script.join(u"\r\n"_s).toUtf8() + "\r\n");
    };
    const Findings before = findingsOf(example.script);
    const Outcome outcome = outcomeOf(example, example.script);
    for (const test::Mutant &mutant : test::mutantsOf(example.script, vocabulary)) {
        ++figures.mutants;
        const Outcome changed = outcomeOf(example, mutant.script);
        const Findings findings = findingsOf(mutant.script);
        holdErrorsToTheirWord(example, mutant, changed, findings, figures);
        if (changed == outcome)
            continue;
        ++figures.effective;
        const auto isNew
            = [&](Severity least) { return !(saidOf(findings, least) - saidOf(before, least)).isEmpty(); };
        if (!isNew(Severity::Hint))
            figures.silent[mutant.what] += mutant.script[mutant.line];
        else
            ++figures.reported;
        if (isNew(Severity::Warning))
            ++figures.warned;
    }
}

Figures figuresOf(recording::ManualPage page)
{
    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    const ScriptCheck check(vocabulary);
    Figures figures;
    for (const ManualExample &example : corpus(page))
        take(example, check, vocabulary, figures);
    std::cout << figures.mutants << " mutants, " << figures.effective << " with an effect, "
              << figures.reported << " of them reported (" << figures.warned
              << " by a warning or an error)\n";
    for (auto it = figures.silent.constBegin(); it != figures.silent.constEnd(); ++it) {
        std::cout << it->size() << " silent: " << it.key().toStdString() << '\n';
        for (const QString &line : *it)
            std::cout << "    " << line.toStdString() << '\n';
    }
    return figures;
}

TEST(Mutations, ofManualAndStarterAppsAreReported)
{
    const Figures figures = figuresOf(recording::ManualPage::Edition1);
    ASSERT_GT(figures.effective, 1000);
    EXPECT_GE(figures.reported, figures.effective * 0.95);
    EXPECT_EQ(figures.falseErrors, QStringList());
}

TEST(Mutations, ofManualAndStarterAppsOfEdition2AreReported)
{
    const Figures figures = figuresOf(recording::ManualPage::Edition2);
    ASSERT_GT(figures.effective, 1000);
    EXPECT_GE(figures.reported, figures.effective * 0.95);
    EXPECT_EQ(figures.falseErrors, QStringList());
}

} // namespace
} // namespace plum
