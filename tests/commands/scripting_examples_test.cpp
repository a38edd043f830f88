// Runs every example of docs/edition-1.md.

#include "commands/point_actions.h"
#include "commands/window_commands.h"
#include "engine/run_time_error.h"
#include "support/manual_examples.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::ExampleBench;
using plum::recording::ManualExample;
using plum::recording::manualExamples;
using plum::recording::ScriptBench;
using plum::recording::unescaped;

namespace {

bool isCommand(ScriptBench &bench, const QString &head)
{
    return bench.system.vocabulary().knows(head);
}

QStringList commandLines(const ManualExample &example)
{
    return example.script.filter(QRegularExpression(u"^(?!//|$)"_s));
}

} // namespace

TEST(ScriptingExamples, EachDoesWhatTheDocumentSays)
{
    ASSERT_GT(manualExamples().size(), 20);
    for (const ManualExample &example : manualExamples()) {
        if (example.isError)
            continue;
        SCOPED_TRACE("edition-1.md:" + std::to_string(example.line));
        ExampleBench bench(example);
        try {
            bench.runKeepingVariables(example.script);
        } catch (const plum::RunTimeError &error) {
            ADD_FAILURE() << error.description().toStdString() << " in line "
                          << error.line().value_or(-1) + 1;
        }
        for (const QString &line : example.shows) {
            const QString name = line.section(u'=', 0, 0).trimmed();
            EXPECT_EQ(bench.variable(name), unescaped(line.section(u'=', 1).trimmed())) << name.toStdString();
        }
        if (example.does) {
            EXPECT_EQ(bench.happened(), *example.does);
        }
        EXPECT_TRUE(example.does || !example.shows.isEmpty()) << "the example shows nothing";
    }
}

TEST(ScriptingExamples, ErrorsAreErrors)
{
    int errors = 0;
    for (const ManualExample &example : manualExamples()) {
        if (!example.isError)
            continue;
        ++errors;
        ExampleBench bench(example);
        EXPECT_THROW(bench.run(example.script), plum::RunTimeError) << "edition-1.md:" << example.line;
    }
    EXPECT_GT(errors, 2);
}

TEST(ScriptingExamples, HoldNoUnknownCommand)
{
    ScriptBench bench;
    for (const ManualExample &example : manualExamples()) {
        for (const QString &line : commandLines(example)) {
            EXPECT_TRUE(isCommand(bench, line.section(u' ', 0, 0)))
                << "edition-1.md:" << example.line << ": " << line.toStdString();
        }
    }
}

TEST(ScriptingExamples, ShowEveryCommandOfEveryNamespace)
{
    QStringList lines;
    for (const ManualExample &example : manualExamples())
        lines += commandLines(example);
    const auto isShown = [&lines](const QString &start) {
        return std::ranges::any_of(lines, [&start](const QString &line) {
            return line == start || line.startsWith(start + u' ')
                || (start.endsWith(u'_') && line.startsWith(start));
        });
    };
    ScriptBench bench;
    const plum::ScriptVocabulary vocabulary = bench.system.vocabulary();
    for (auto table = vocabulary.tables().begin(); table != vocabulary.tables().end(); ++table) {
        for (const plum::CommandInfo &info : *table) {
            if (info.word.isEmpty() || !info.existsIn(plum::Edition::One))
                continue;
            const QString command = table.key() + u'.' + info.word.toString();
            EXPECT_TRUE(isShown(command)) << command.toStdString();
        }
    }

    const QString text = lines.join(u'\n');
    for (const auto &selector : plum::WindowCommands::getSelectors())
        EXPECT_TRUE(text.contains(u"window.get \"%1\""_s.arg(selector.info.word)))
            << selector.info.word.toUtf8().toStdString();
    for (const auto &selector : plum::WindowCommands::setSelectors())
        EXPECT_TRUE(text.contains(u"window.set \"%1\""_s.arg(selector.info.word)))
            << selector.info.word.toUtf8().toStdString();
    for (const auto &action : plum::PointActions::table())
        EXPECT_TRUE(action.word.isEmpty() || text.contains(u"\",\"%1\""_s.arg(action.word)))
            << action.word.toUtf8().toStdString();
}
