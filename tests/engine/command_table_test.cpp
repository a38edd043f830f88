#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

// A namespace with a word that occurs twice.
class Sample final : public TableHandler<Sample>
{
public:
    explicit Sample(WordMatch match = WordMatch::Exact)
        : TableHandler(match)
    {
    }

    static std::span<const Row> table()
    {
        static constexpr std::array rows{
            Row{{u"one", {{{u"a", FieldKind::Text}, {u"b", FieldKind::Number, u"7"}}}, u"The first."},
                &Sample::first},
            Row{{u"one", {}, u"Never reached."}, &Sample::second},
            Row{{u"two", {}, u"The second."}, &Sample::second},
        };
        return rows;
    }

    QStringList calls;

private:
    void first(const CommandCall &call) { calls += u"first "_s + call.command() + u' ' + call.arguments(); }
    void second(const CommandCall &call) { calls += u"second "_s + call.arg(1) + u' ' + call.whole(); }
};

// The words that edition 1 has.
QStringList wordsOf(const QList<CommandInfo> &commands)
{
    QStringList words;
    for (const CommandInfo &info : commands) {
        if (info.existsIn(Edition::One))
            words += info.word.toString();
    }
    return words;
}

} // namespace

TEST(CommandTable, TheFirstRowWithTheWordWins)
{
    recording::ScriptBench bench;
    Sample sample;
    sample.call(CommandCall(bench.reader, u"one"_s, u"x"_s));
    sample.call(CommandCall(bench.reader, u"One"_s, u"x"_s));
    sample.call(CommandCall(bench.reader, u"two"_s, u"\"a\",\"b\""_s));
    EXPECT_EQ(sample.calls, (QStringList{u"first one x"_s, u"second b a\",\"b"_s}));
}

TEST(CommandTable, MayMatchLowerCasedWordsAndKeepsWhatTheScriptWrote)
{
    recording::ScriptBench bench;
    Sample sample(WordMatch::LowerCased);
    sample.call(CommandCall(bench.reader, u"ONE"_s, u"x"_s));
    EXPECT_EQ(sample.calls, QStringList{u"first ONE x"_s});
}

TEST(CommandTable, SaysWhichFieldsACommandHas)
{
    const std::span<const Field> fields = Sample::table()[0].info.usedFields();
    ASSERT_EQ(fields.size(), 2U);
    EXPECT_EQ(fields[1].name, u"b");
    EXPECT_EQ(fields[1].fallback, u"7");
    EXPECT_TRUE(Sample::table()[2].info.usedFields().empty());
}

TEST(CommandTable, AllFieldsMayBeUsed)
{
    CommandInfo widest;
    widest.fields.fill({u"value", FieldKind::Text});
    EXPECT_EQ(widest.usedFields().size(), static_cast<size_t>(maxFields));
}

TEST(CommandTable, NamespacesTestTheWordsOfEditionOneInOrder)
{
    recording::ScriptBench bench;
    EXPECT_EQ(wordsOf(bench.handler(u"mouse"_s).commands()),
        u"click d_click move r_click get_xy while_click get_x get_y offset after_offset drag drag_to l_down l_up r_down r_up"_s
            .split(u' '));
    EXPECT_EQ(wordsOf(bench.handler(u"keyboard"_s).commands()),
        u"hotkey key send ensend key_down key_up"_s.split(u' '));
    EXPECT_EQ(wordsOf(bench.handler(u"window"_s).commands()), u"get set"_s.split(u' '));
    EXPECT_EQ(wordsOf(bench.handler(u"text"_s).commands()), QStringList{u"replace"_s});
    EXPECT_EQ(wordsOf(bench.handler(u"time"_s).commands()), QStringList{u"sleep"_s});
    EXPECT_EQ(wordsOf(bench.handler(u"print"_s).commands()), QStringList{u"html"_s});
}

TEST(CommandTable, EveryRowSaysWhatItDoes)
{
    recording::ScriptBench bench;
    const ScriptVocabulary vocabulary = bench.system.vocabulary();
    EXPECT_TRUE(vocabulary.tables().contains(u"while"_s));
    for (const QList<CommandInfo> &table : vocabulary.tables()) {
        for (const CommandInfo &info : table) {
            EXPECT_TRUE(info.summary.endsWith(u'.')) << info.word.toString().toStdString();
            for (const Field &field : info.usedFields())
                EXPECT_FALSE(field.name.isEmpty()) << info.word.toString().toStdString();
        }
    }
}
