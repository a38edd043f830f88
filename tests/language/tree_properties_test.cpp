#include "engine/edition2/parser.h"
#include "support/dice.h"
#include "support/script_bench.h"

#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using namespace plum::edition2;
using plum::recording::Dice;
using plum::recording::ScriptBench;

namespace {

// Whole scripts, and pieces of scripts in any order.
QStringList ruleScripts()
{
    QStringList texts;
    QDirIterator walk(
        QStringLiteral(PLUM_LANGUAGE_TESTS), {u"*.wf"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        texts += QString::fromUtf8(file.readAll());
    }
    EXPECT_GT(texts.size(), 30);
    return texts;
}

QString shuffled(Dice &dice, const QStringList &lines)
{
    QString text;
    for (int left = dice.below(40); left > 0; --left)
        text += lines[dice.below(int(lines.size()))] + u'\n';
    return text;
}

class TreeProperties : public testing::Test
{
protected:
    // The rules show values with a command of their own.
    TreeProperties()
    {
        vocabulary.add(u"show"_s, {{u"that", {{{u"value", FieldKind::Text}}}, u"Shows a value."}});
    }

    void expectSameWhenPrinted(const QString &text)
    {
        const Parsed parsed = parse(text, vocabulary);
        if (!parsed.mistakes.isEmpty())
            return;
        const QString printed = print(parsed.tree);
        const Parsed again = parse(printed, vocabulary);
        EXPECT_TRUE(again.mistakes.isEmpty()) << printed.toStdString();
        EXPECT_TRUE(again.tree == parsed.tree) << text.toStdString() << "---\n" << printed.toStdString();
        EXPECT_EQ(print(again.tree), printed);
        ++compared;
    }

    // Every mistake has a place in the text.
    void expectPlaces(const QString &text)
    {
        const Parsed parsed = parse(text, vocabulary);
        const QStringList lines = text.split(u'\n');
        for (const Mistake &mistake : parsed.mistakes) {
            ASSERT_GE(mistake.at.line, 1) << text.toStdString();
            ASSERT_LE(mistake.at.line, lines.size()) << text.toStdString();
            ASSERT_GE(mistake.at.column, 1) << text.toStdString();
            ASSERT_LE(mistake.at.column, lines[mistake.at.line - 1].size() + 1) << text.toStdString();
            ASSERT_FALSE(mistake.reason.isEmpty());
        }
    }

    ScriptBench bench;
    ScriptVocabulary vocabulary = bench.system.vocabulary();
    int compared = 0;
};

} // namespace

TEST_F(TreeProperties, aPrintedTreeIsParsedToTheSameTree)
{
    for (const QString &text : ruleScripts())
        expectSameWhenPrinted(text);
    EXPECT_GT(compared, 30);
}

TEST_F(TreeProperties, randomScriptsArePrintedToTheSameTree)
{
    const QStringList lines{u"set.a 1"_s, u"set.b \"x \"\"y\"\"\" // why"_s, u"mouse.move -3:4"_s,
        u"// a comment"_s, u"  text.replace r,$\"{a} {{b}}\",\"\",\"\",,2"_s, u"os.tips set.a//b"_s,
        u"file.read \"a\",,v"_s, u"os.find_color FF0000,,,here"_s, u"pace.set 3"_s};
    const QStringList opening{u"repeat.times 3,i"_s, u"when.start set.a,is,2"_s, u"try.start"_s};
    const QStringList closing{u"repeat.end"_s, u"when.else\nwhen.end // done"_s, u"try.failed r\ntry.end"_s};
    for (quint32 seed = 0; seed < 2000; ++seed) {
        Dice dice(seed);
        QString text;
        QStringList open;
        for (int left = dice.below(30); left > 0; --left) {
            const int block = dice.below(3);
            if (dice.oneIn(4)) {
                text += opening[block] + u'\n';
                open += closing[block];
            } else if (!open.isEmpty() && dice.oneIn(3)) {
                text += open.takeLast() + u'\n';
            } else {
                text += lines[dice.below(int(lines.size()))] + u'\n';
            }
        }
        while (!open.isEmpty())
            text += open.takeLast() + u'\n';
        expectSameWhenPrinted(text);
    }
    EXPECT_GT(compared, 500);
}

TEST_F(TreeProperties, anyPrefixOfAScriptIsReadToItsEnd)
{
    for (const QString &text : ruleScripts()) {
        for (qsizetype length = 0; length <= text.size(); ++length)
            expectPlaces(text.first(length));
    }
}

TEST_F(TreeProperties, linesInAnyOrderHaveTheirMistakesInPlace)
{
    const QStringList lines = ruleScripts().join(u'\n').split(u'\n');
    for (quint32 seed = 0; seed < 3000; ++seed) {
        Dice dice(seed);
        expectPlaces(shuffled(dice, lines));
    }
}

TEST_F(TreeProperties, blocksThatStandTooDeepAreOneMistake)
{
    const QString deep = u"repeat.times 2\n"_s.repeated(100'000);
    const Parsed parsed = parse(deep, vocabulary);
    ASSERT_FALSE(parsed.mistakes.isEmpty());
    EXPECT_EQ(parsed.mistakes.last().at.line, int(deepestBlock) + 1);
    EXPECT_EQ(parsed.mistakes.last().reason, u"blocks stand in each other at most 200 deep"_s);

    const QString allowed = u"repeat.times 1\n"_s.repeated(200) + u"repeat.end\n"_s.repeated(200);
    EXPECT_TRUE(parse(allowed, vocabulary).mistakes.isEmpty());
    expectSameWhenPrinted(allowed);
}
