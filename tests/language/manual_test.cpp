// Runs every example of docs/scripting.md; manual_examples.h says how they are written.

#include "engine/editions/script_error.h"
#include "support/manual_examples.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::ExampleBench;
using plum::recording::ManualExample;
using plum::recording::manualExamples;
using plum::recording::ManualPage;
using plum::test::TemporaryFiles;

namespace {

const QList<ManualExample> &examples()
{
    return manualExamples(ManualPage::Edition2);
}

QString scriptOf(const ManualExample &example)
{
    QStringList lines = example.script;
    if (!lines.first().startsWith("//edition:"_L1))
        lines.prepend(u"//edition:2"_s);
    return lines.join(u'\n');
}

// Runs an example and closes all that it shows; the first mistake, as "line:column: reason".
QString errorOf(ExampleBench &bench, const QString &path)
{
    try {
        bench.system.starts().prepareCommandLine(path);
        bench.system.starts().runAll();
        for (;;) {
            const QString shown = bench.events().isEmpty() ? QString() : bench.events().last();
            if (!shown.startsWith("tip "_L1) && !shown.startsWith("input "_L1))
                return {};
            const bool isQuestion = shown.startsWith("input "_L1);
            const QString answer = isQuestion ? bench.answers.takeFirst() : QString();
            bench.system.starts().answer(1, {isQuestion, shown.section(u'|', 1), answer});
        }
    } catch (const ScriptError &error) {
        const ScriptMistake &first = error.mistakes().front();
        return u"%1:%2: %3"_s.arg(first.line).arg(first.column).arg(first.reason);
    }
}

} // namespace

TEST(Manual, EachExampleDoesWhatThePageSays)
{
    ASSERT_GT(examples().size(), 10);
    for (const ManualExample &example : examples()) {
        SCOPED_TRACE("scripting.md:" + std::to_string(example.line));
        ExampleBench bench(example);
        const TemporaryFiles files;
        const QString error = errorOf(bench, files.write(u"main.wf"_s, scriptOf(example).toUtf8()));
        EXPECT_TRUE(example.error.isEmpty() ? error.isEmpty() : error.startsWith(example.error))
            << error.toStdString();
        QStringList tips;
        for (const QString &event : bench.events().filter(QRegularExpression(u"^tip "_s)))
            tips += event.sliced(4);
        EXPECT_EQ(tips, example.shows);
        if (example.does) {
            EXPECT_EQ(bench.happened(), *example.does + QStringList{u"end process"_s});
        }
        EXPECT_TRUE(example.does || !example.shows.isEmpty() || !example.error.isEmpty())
            << "the example shows nothing";
    }
}

TEST(Manual, NamesEveryCommandOfEdition2)
{
    QFile page(QStringLiteral(PLUM_DOCS_FOLDER "/scripting.md"));
    QFile older(QStringLiteral(PLUM_DOCS_FOLDER "/edition-1.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly) && older.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    const QString before = QString::fromUtf8(older.readAll());
    recording::ScriptBench bench;
    const ScriptVocabulary vocabulary = bench.system.vocabulary();
    for (auto table = vocabulary.tables().begin(); table != vocabulary.tables().end(); ++table) {
        for (const CommandInfo &info : *table) {
            const QString head = table.key() + u'.' + info.word.toString();
            if (info.word.isEmpty() || !info.existsIn(Edition::Two))
                continue;
            const bool isTold
                = text.contains(head) || (info.editions == Editions::Both && before.contains(head));
            EXPECT_TRUE(isTold) << head.toStdString();
        }
    }
}
