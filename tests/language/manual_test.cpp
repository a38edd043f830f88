// Runs every example of docs/scripting.md; manual_examples.h says how they are written.

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

namespace {

const QList<ManualExample> &examples()
{
    return manualExamples(ManualPage::Edition2);
}

} // namespace

TEST(Manual, EachExampleDoesWhatThePageSays)
{
    ASSERT_GT(examples().size(), 10);
    for (const ManualExample &example : examples()) {
        SCOPED_TRACE("scripting.md:" + std::to_string(example.line));
        ExampleBench bench(example);
        const QString error = bench.runToTheEnd(example.script);
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
