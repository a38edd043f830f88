#include "support/manual_examples.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"
#include "upgrade/proof.h"
#include "upgrade/script_upgrade.h"

#include <QFile>

#include <gtest/gtest.h>

#include <array>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::ManualExample;
using plum::recording::ScriptBench;
using upgrade::Upgraded;

namespace {

Upgraded upgraded(const QStringList &lines, const QString &folder = {})
{
    ScriptBench bench;
    return upgrade::upgrade(lines.join(u"\r\n"_s).toUtf8() + "\r\n", folder, bench.system.vocabulary());
}

// What becomes of a script: its lines in edition 2, or the line that is in the way and why.
QStringList outcome(const QStringList &lines, const QString &folder = {})
{
    const Upgraded script = upgraded(lines, folder);
    if (script.refusal)
        return {u"%1: %2"_s.arg(script.refusal->line).arg(script.refusal->reason)};
    EXPECT_TRUE(script.script.endsWith(u"\r\n"_s));
    return script.script.chopped(2).split(u"\r\n"_s);
}

QStringList oldApp(const QString &name)
{
    QFile file(QStringLiteral(PLUM_UPGRADE_SCRIPTS) + u'/' + name + u".wf"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll()).trimmed().split(u"\r\n"_s);
}

} // namespace

// The apps that came with Plum before there was another edition.
TEST(ScriptUpgrade, EveryEarlierStarterAppIsWrittenAndProved)
{
    for (const char *name : {"calc", "clip", "corner", "hello", "note", "notes", "open", "page", "pointer",
             "slashes", "timer", "type", "web"}) {
        const QStringList before = oldApp(QString::fromLatin1(name));
        const QStringList after = outcome(before);
        ASSERT_EQ(after.size(), before.size() + 1) << name << ": " << after.join(u'\n').toStdString();
        EXPECT_EQ(after[0], before[0]) << name;
        EXPECT_EQ(after[1], u"//edition:2"_s) << name;
    }
    EXPECT_EQ(outcome(oldApp(u"timer"_s)).mid(2),
        (QStringList{u"me.hide"_s, u"set.pause $\"{me.enter_input}000\""_s, u"time.sleep set.pause"_s,
            u"os.tips $\"{me.enter_input} seconds are over.\""_s}));
    EXPECT_EQ(outcome(oldApp(u"corner"_s)).mid(2),
        (QStringList{u"me.hide"_s, u"time.sleep 300"_s, u"window.get active_window,window"_s,
            u"window.set move_window,set.window,0:0"_s}));
}

// By their first lines, those of the manual of edition 1 that stay what they are, and the line that is named.
TEST(ScriptUpgrade, EveryExampleOfTheManualIsProvedOrALineIsNamed)
{
    struct Refused
    {
        QString firstLine;
        QString start; // of what is said
    };
    const QList<Refused> refused{
        {u"me.enter \"all\""_s, u"3: edition 1 does \"message |6|0\""_s},
        {u"me.enter_1 \"_,_\",\"who\""_s, u"1: edition 1 does \"message |6|0\""_s},
        {u"text.replace \"dashes\",\"a-b-c\",\"-\",\"+\",\"\",\"\",\"\""_s, u"3: edition 1 drops"_s},
        {u"os.find_pic \"_pfold_\\button.png\",\"0:0:200:100\",\"\",\"move\""_s,
            u"1: edition 2 ends there"_s},
        {u"set.path +?+\\report.txt+(os.path_pfold)"_s, u"2: edition 2 ends there"_s},
        {u"net.post \"http://localhost/\""_s, u"1: edition 2 has no command net.post"_s},
        {u"mouse.move \"here\""_s, u"1: edition 1 does not get through"_s},
        {u"while.start \"count\",\"many\""_s, u"1: \"many\" is no whole number"_s},
        {u"text.replace \"cut\",\"a,b\",\"a\",\"x\",\"\",\"\",\"\""_s,
            u"1: edition 1 does not get through"_s},
        {u"text.replace \"too\",\"few\""_s, u"1: edition 1 does not get through"_s},
    };
    qsizetype found = 0;
    for (const ManualExample &example : recording::manualExamples()) {
        const QStringList after = outcome(example.script);
        const auto row = std::ranges::find(refused, example.script.first(), &Refused::firstLine);
        if (row == refused.end()) {
            EXPECT_EQ(after.size(), example.script.size() + 1)
                << example.line << ": " << after.first().toStdString();
            continue;
        }
        ++found;
        EXPECT_TRUE(after.first().startsWith(row->start))
            << example.line << ": " << after.first().toStdString();
    }
    EXPECT_EQ(found, refused.size());
}

TEST(ScriptUpgrade, APictureIsLookedForBesideTheScript)
{
    test::TemporaryFiles files;
    QFile::copy(QStringLiteral(PLUM_UPGRADE_SCRIPTS) + u"/dot.png"_s, files.folder() + u"/dot.png"_s);
    EXPECT_EQ(outcome({u"os.find_pic \"_pfold_\\dot.png\",\"\",\"\",\"move\""_s}, files.folder()),
        (QStringList{u"//edition:2"_s, u"os.find_pic \"_pfold_\\dot.png\",,,move"_s}));
}

TEST(ScriptUpgrade, NamesWhatHasNoWordsInEdition2)
{
    struct Case
    {
        QStringList script;
        QString said;
    };
    const QList<Case> cases{
        {{u"//edition:2"_s}, u"1: it is of edition 2 already"_s},
        {{u"mouse.click"_s, u" mouse.click"_s},
            u"2: it begins with a blank, for which edition 1 passes over it"_s},
        {{u"mouse.click"_s, u"mouse"_s},
            u"2: it has no dot, so edition 1 takes the command of the line before"_s},
        {{u"mouse.clack"_s}, u"1: there is no command mouse.clack, and edition 1 passes over it"_s},
        {{u"set.a \"1\""_s, u"os.tips"_s}, u"2: it takes the arguments of the line before"_s},
        {{u"os.tips set.late"_s, u"set.late \"x\""_s},
            u"1: set.late may have no value yet, for which edition 1 has words of its own"_s},
        {{u"set.a-b \"1\""_s}, u"1: \"a-b\" is no name of a variable in edition 2"_s},
        {{u"while.start \"count\",\"2\""_s, u"while.start \"count\",\"2\""_s},
            u"2: a while inside a while repeats other lines than one expects"_s},
        {{u"while.start \"count\",\"2\""_s, u"mouse.click"_s}, u"2: its while.end is missing"_s},
        {{u"while.end"_s}, u"1: there is no while.start for it"_s},
        {{u"set.n \"3\""_s, u"while.start \"count\",set.n"_s},
            u"2: how often it repeats is not written as a number, and edition 1 goes through once even for 0"_s},
        {{u"set.v \"x\""_s, u"mouse.get_xy set.v"_s},
            u"2: the variable that it fills is named by another one"_s},
        {{u"mouse.click"_s, u"keyboard.key \"f1\""_s, u"mouse.click"_s},
            u"2: edition 1 does \"key 0 1\", and edition 2 \"key 112 1\""_s},
        {{u"set.a \"x\""_s, u"file.save \"out.txt\",\"a\",\"\""_s}, u"2: it leaves other files behind"_s},
        {{u"mouse.while_click \"\",\"click\",\"5\""_s},
            u"1: edition 1 does not get through, so nothing can be compared: it does not come to an end"_s},
    };
    for (const Case &wanted : cases)
        EXPECT_EQ(outcome(wanted.script), QStringList(wanted.said))
            << wanted.script.join(u'\n').toStdString();
}

TEST(ScriptUpgrade, KeepsWhatIsSaidInAnotherWay)
{
    struct Case
    {
        QString before;
        QString after;
    };
    const QList<Case> cases{
        {u"os.tips \"say \"\"\""_s, u"os.tips \"say \"\"\"\"\""_s},
        {u"os.tips a{b} +?++(str.r)"_s, u"os.tips $\"a{{b}} {str.r}\""_s},
        {u"os.tips set.never"_s, u"os.tips \"\""_s},
        {u"set.a set.never"_s, u"set.a \"never\""_s},
        {u"mouse.move \"7\""_s, u"mouse.move 7:7"_s},
        {u"keyboard.key \"CTRL\",\"c\""_s, u"keyboard.key ctrl,c"_s},
        {u"FILE.open \"x\",\"\",\"\""_s, {}},
        {u"file.Open \"x\",\"\",\"\",\"too much\""_s, u"file.open \"x\",\"\""_s},
        {u"// comment"_s, u"// comment"_s},
        {u"os.tips one: two"_s, u"os.tips \"\""_s},
    };
    for (const Case &wanted : cases) {
        const QStringList after = outcome({wanted.before});
        if (wanted.after.isEmpty())
            EXPECT_EQ(after.size(), 1);
        else
            EXPECT_EQ(after.value(1), wanted.after) << after.first().toStdString();
    }
}

TEST(UpgradeProof, SeesAnEventThatDiffers)
{
    const QStringList before{u"mouse.click"_s, u"mouse.l_down"_s};
    const auto difference
        = upgrade::differenceBetween(before, {u"//edition:2"_s, u"mouse.click"_s, u"mouse.r_down"_s}, {});
    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->line, 3);
    EXPECT_EQ(difference->reason, u"edition 1 does \"mouse 2\", and edition 2 \"mouse 8\"");
    EXPECT_FALSE(upgrade::differenceBetween(before, {u"//edition:2"_s, before[0], before[1]}, {}));
}

// Scripts that are tried out reach no file of the machine.
TEST(UpgradeProof, WritesNothingOnTheRealDisk)
{
    const test::TemporaryFiles files;
    const QString path = files.folder() + u"/out.txt"_s;
    EXPECT_EQ(outcome({u"set.a \"x\""_s, u"file.save \"%1\",\"a\",\"append\""_s.arg(path)}).size(), 3);
    EXPECT_FALSE(QFile::exists(path));
}
