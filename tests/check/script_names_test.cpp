#include "check/script_check.h"
#include "check/script_names.h"
#include "support/printers.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

class ScriptNamesOf : public testing::Test
{
protected:
    void take(const QStringList &script, Edition edition)
    {
        lines = script;
        m_edition = edition;
        const QString lineEnd = edition == Edition::One ? u"\r\n"_s : u"\n"_s;
        examined = check.examine(script.join(lineEnd).toUtf8());
        names = std::make_unique<ScriptNames>(examined.names, lines);
    }

    // All places of the name at a place, "line:column" with "!" where it is set.
    QStringList placesOf(int line, int column) const
    {
        const NameUse *use = names->at(line, column);
        QStringList places;
        for (const NameUse &other : use ? names->sameAs(*use) : QList<NameUse>()) {
            EXPECT_EQ(lines[other.line - 1].sliced(other.column - 1, other.name.size()), other.name);
            places += u"%1:%2%3"_s.arg(other.line).arg(other.column).arg(other.isSet ? u"!"_s : QString());
        }
        return places;
    }

    QString obstacle(int line, int column, const QString &newName) const
    {
        const NameUse *use = names->at(line, column);
        return use ? names->obstacle(*use, newName, m_edition, examined.findings) : u"no name"_s;
    }

    ScriptCheck check{recording::ScriptBench().system.vocabulary()};
    QStringList lines;
    ScriptCheck::Examined examined;
    std::unique_ptr<ScriptNames> names;

private:
    Edition m_edition = Edition::One;
};

TEST_F(ScriptNamesOf, edition2FindVariablesInTextsExpressionsAndBehindSet)
{
    take({u"//edition:2"_s, u"set.who \"Ann\""_s, u"os.tips $\"\"\"{who}\"\" and {set.who} {{who}}\""_s,
             u"calc.set who,\"length(set.who) + set.whose\""_s, u"set.whose 1"_s,
             u"mouse.get_xy who // who"_s},
        Edition::Two);
    EXPECT_EQ(
        placesOf(2, 5), QStringList({u"2:5!"_s, u"3:14"_s, u"3:30"_s, u"4:10!"_s, u"4:26"_s, u"6:14!"_s}));
    EXPECT_EQ(placesOf(2, 8), placesOf(2, 5)); // just behind it
    EXPECT_EQ(placesOf(2, 9), QStringList());
    EXPECT_EQ(obstacle(2, 5, u"whom"_s), QString());
    EXPECT_EQ(obstacle(2, 5, u"whose"_s), u"There is \"whose\" already."_s);
    EXPECT_EQ(obstacle(2, 5, u"2nd"_s), u"\"2nd\" is no name."_s);
}

TEST_F(ScriptNamesOf, edition2KeepTheVariablesOfPartsApartAndKnowTheParts)
{
    take({u"//edition:2"_s, u"set.n 1"_s, u"part.run twice,set.n,n"_s, u"part.start twice,n"_s,
             u"    part.return $\"{n}{n}\""_s, u"part.end"_s, u"part.run other,1"_s},
        Edition::Two);
    EXPECT_EQ(placesOf(2, 5), QStringList({u"2:5!"_s, u"3:20"_s, u"3:22!"_s}));
    EXPECT_EQ(placesOf(5, 20), QStringList({u"4:18!"_s, u"5:20"_s, u"5:23"_s}));
    EXPECT_EQ(placesOf(3, 10), QStringList({u"3:10"_s, u"4:12!"_s}));
    EXPECT_EQ(obstacle(7, 10, u"more"_s), u"The part \"other\" stands in another file."_s);
}

TEST_F(ScriptNamesOf, edition2StayWhenALineThatCannotBeReadMayMeanThem)
{
    take({u"//edition:2"_s, u"set.a 1"_s, u"os.tips a b set.a"_s, u"os.tips set.a"_s}, Edition::Two);
    EXPECT_EQ(obstacle(2, 5, u"b"_s), u"Line 3 has a mistake, and \"a\" in it."_s);
}

TEST_F(ScriptNamesOf, edition1FindVariablesInQuotesReferencesAndTemplates)
{
    take({u"set.who \"Ann\""_s, u"keyboard.send a_,_b +?+ +?++(set.who+set.who)"_s, u"mouse.get_xy \"who\""_s,
             u"file.save os.path_desktop,\"who\",\"append\""_s},
        Edition::One);
    EXPECT_EQ(placesOf(1, 5), QStringList({u"1:5!"_s, u"2:34"_s, u"2:42"_s, u"3:15!"_s, u"4:28"_s}));
    EXPECT_EQ(obstacle(1, 5, u"a name"_s), u"\"a name\" is no name."_s);
    EXPECT_EQ(obstacle(1, 5, u"谁"_s), QString());
}

TEST_F(ScriptNamesOf, edition1StayWhenAValueDecidesWhichVariableALineSets)
{
    take({u"set.who \"Ann\""_s, u"mouse.get_xy set.who"_s, u"keyboard.send set.who"_s}, Edition::One);
    EXPECT_EQ(obstacle(1, 5, u"whom"_s),
        u"A value decides which variable a line sets, so \"who\" may be meant there."_s);
}

TEST_F(ScriptNamesOf, edition1StayWhenALineMeansThemWithoutTheirName)
{
    take({u"os.find_color \"00FF00\",\"\",\"\",\"get_xy\""_s, u"mouse.move set.tarnwick_xy"_s}, Edition::One);
    EXPECT_EQ(placesOf(2, 16), QStringList({u"2:16"_s}));
    EXPECT_EQ(obstacle(2, 16, u"point"_s), u"Line 1 means \"tarnwick_xy\" without its name."_s);
}

} // namespace
} // namespace plum
