// What a script can bring about, class by class, in both editions.
#include "sheet/compute_sheet.h"
#include "sheet/effect_collector.h"
#include "sheet/sheets.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;
using test::allWords;
using test::jsonOf;
using test::jsonOf2;

TEST(ComputedSheet, ofAScriptThatShowsATipIsEmpty)
{
    EXPECT_EQ(jsonOf({u"//guide:x"_s, u"os.tips \"hello\""_s, u"set.a \"1\""_s}), "{}");
    EXPECT_EQ(jsonOf2({u"set.a 1"_s, u"os.tips set.a"_s}), "{}");
}

// Every row that reaches outside says so.
TEST(ComputedSheet, knowsWhatEveryRowDoes)
{
    for (auto table = allWords().tables().begin(); table != allWords().tables().end(); ++table) {
        for (const CommandInfo &info : *table)
            EXPECT_TRUE(info.effects.areNamed() || !mustNameEffects(info))
                << table.key().toStdString() << '.' << info.word.toString().toStdString();
    }
}

TEST(ComputedSheet, seesWhatIsSeen)
{
    EXPECT_EQ(jsonOf({u"os.get_clipboard \"a\""_s}), R"({"see":["clipboard"]})");
    EXPECT_EQ(jsonOf({u"os.tips os.get_clipboard"_s}), R"({"see":["clipboard"]})");
    EXPECT_EQ(jsonOf({u"os.tips it is +?++(os.get_clipboard)"_s}), R"({"see":["clipboard"]})");
    EXPECT_EQ(jsonOf({u"os.tips \"os.get_clipboard\""_s}), "{}");
    EXPECT_EQ(jsonOf({u"os.find_color \"FF0000\",\"\",\"\",\"at\""_s}), R"({"see":["screen"]})");
    EXPECT_EQ(jsonOf({u"window.get \"active_window\",\"w\""_s}), R"({"see":["windows"]})");
    EXPECT_EQ(jsonOf2({u"set.a mouse.xy"_s}), R"({"see":["pointer"]})");
    EXPECT_EQ(jsonOf2({u"os.tips $\"{os.get_clipboard}\""_s}), R"({"see":["clipboard"]})");
}

TEST(ComputedSheet, followsTheActionsOfASearch)
{
    EXPECT_EQ(jsonOf({u"os.find_color \"FF0000\",\"\",\"\",\"click\""_s}),
        R"({"input":["mouse"],"see":["screen"]})");
    EXPECT_EQ(jsonOf({u"os.find_color \"FF0000\",\"\",\"\",\"set_clipboard\""_s}),
        R"({"input":["clipboard"],"see":["screen"]})");
    // Which it is turns out in the run.
    EXPECT_EQ(jsonOf({u"os.find_color \"FF0000\",\"\",\"\",me.enter_input"_s}),
        R"({"input":["mouse","clipboard"],"see":["screen"]})");
    EXPECT_EQ(jsonOf({u"mouse.after_offset \"1:1\",\"2:2\",\"\""_s}), R"({"input":["mouse"]})");
    EXPECT_EQ(jsonOf({u"mouse.after_offset \"1:1\",\"2:2\",\"tips\""_s}), "{}");
}

TEST(ComputedSheet, findsFilesThroughVariablesAndTemplates)
{
    EXPECT_EQ(jsonOf({u"file.read \"_pfold_/a.txt\",\"\",\"t\""_s}), R"({"read":["app:a.txt"]})");
    EXPECT_EQ(
        jsonOf({u"set.p \"_pfold_/a.txt\""_s, u"file.read set.p,\"\",\"t\""_s}), R"({"read":["app:a.txt"]})");
    EXPECT_EQ(jsonOf({u"set.d os.path_package"_s, u"set.p +?+\\b.txt+(set.d)"_s, u"set.t \"x\""_s,
                  u"file.save set.p,\"t\",\"append\""_s}),
        R"({"write":["app:b.txt"]})");
    EXPECT_EQ(jsonOf2({u"set.n \"a\""_s, u"file.write $\"{os.path_desktop}/{n}.txt\",\"x\""_s}),
        R"({"write":["desktop:a.txt"]})");
    EXPECT_EQ(jsonOf2({u"part.start go,p"_s, u"file.exists set.p,there"_s, u"part.end"_s,
                  u"part.run go,\"/etc/hosts\""_s}),
        R"({"read":["file:/etc/hosts"]})");
}

TEST(ComputedSheet, widensWhatItCannotFollow)
{
    EXPECT_EQ(jsonOf({u"os.get_clipboard \"p\""_s, u"file.read set.p,\"\",\"t\""_s}),
        R"({"read":["anything"],"see":["clipboard"]})");
    // The name of the variable is not known, so it may be any.
    EXPECT_EQ(jsonOf({u"set.p \"/etc/hosts\""_s, u"os.get_clipboard me.enter_input"_s,
                  u"file.read set.p,\"\",\"t\""_s}),
        R"({"read":["anything"],"see":["clipboard"]})");
    EXPECT_EQ(jsonOf({u"file.read \"_pfold_/list.txt\",\"\",\"t\""_s, u"file.open set.t"_s}),
        R"({"network":["anything"],"read":["app:list.txt"],"run":["anything"]})");
    EXPECT_EQ(jsonOf({u"file.call_js \"_pfold_/a.js\",\"f\",\"\",\"v\""_s}),
        R"({"read":["app:a.js"],"run":["javascript"]})");
    EXPECT_EQ(jsonOf({u"webbox.html me.enter_input"_s}), R"({"network":["anything"]})");
    EXPECT_EQ(jsonOf({u"print.html \"done\""_s}), "{}");
}

TEST(ComputedSheet, keepsTheFolderOfAPathThatEndsUnknown)
{
    EXPECT_EQ(jsonOf({u"os.get_clipboard \"n\""_s, u"file.read _pfold_/x+?+.txt+(set.n),\"\",\"t\""_s}),
        R"({"read":["app:"],"see":["clipboard"]})");
    EXPECT_EQ(jsonOf({u"os.get_clipboard \"n\""_s, u"file.read /+?++(set.n),\"\",\"t\""_s}),
        R"({"read":["anything"],"see":["clipboard"]})");
}

TEST(ComputedSheet, knowsThatFoldersHavePathsOfTheirOwn)
{
    EXPECT_EQ(jsonOf2({u"file.read $\"{os.path_package}/x{os.path_desktop}\",,t"_s}), R"({"read":["app:"]})");
    EXPECT_EQ(
        jsonOf2({u"file.read $\"{os.path_desktop}{os.path_desktop}\",,t"_s}), R"({"read":["anything"]})");
    EXPECT_EQ(jsonOf2({u"os.窗口最小化 os.path_package"_s}), R"({"input":["windows"]})");
}

TEST(ComputedSheet, cutsWhatWasTypedAtSignsOfAListAlone)
{
    for (const QString &separator : {u"\",\""_s, u"\" \""_s, u"\"; \""_s, u"\"\""_s}) {
        EXPECT_EQ(jsonOf2({u"input.enter_1 %1,p"_s.arg(separator), u"file.read set.p,,t"_s}),
            R"({"read":["given"]})");
    }
    for (const QString &separator : {u"\"/\""_s, u"\".txt\""_s, u"me.enter_input"_s, u"os.path_desktop"_s}) {
        EXPECT_EQ(jsonOf2({u"input.enter_1 %1,p"_s.arg(separator), u"file.read set.p,,t"_s}),
            R"({"read":["anything"]})");
    }
    EXPECT_EQ(jsonOf({u"file.read me.enter_input_2,\"\",\"t\""_s}), R"({"read":["given"]})");
}

TEST(ComputedSheet, knowsWhatTheUserGives)
{
    EXPECT_EQ(jsonOf({u"file.open me.drag"_s}), R"({"network":["given"],"run":["given"]})");
    EXPECT_EQ(
        jsonOf({u"input.text \"p\",\"Which?\""_s, u"file.read set.p,\"\",\"t\""_s}), R"({"read":["given"]})");
    EXPECT_EQ(jsonOf({u"os.tips me.drag_text"_s}), R"({"read":["given"]})");
    EXPECT_EQ(jsonOf({u"keyboard.send me.enter_input"_s}), R"({"input":["paste:given"]})");
    // Something behind it makes it another text.
    EXPECT_EQ(jsonOf({u"file.read +?+.bak+(me.drag),\"\",\"t\""_s}), R"({"read":["anything"]})");
}

TEST(ComputedSheet, knowsTheServer)
{
    EXPECT_EQ(jsonOf({u"net.get \"https://Example.org/x\",\"p\""_s}), R"({"network":["host:example.org"]})");
    EXPECT_EQ(jsonOf({u"net.get http://a.example/?q=+?++(me.enter_input),\"p\""_s}),
        R"({"network":["host:a.example"]})");
    EXPECT_EQ(
        jsonOf({u"net.get http://a.example+?++(me.enter_input),\"p\""_s}), R"({"network":["anything"]})");
    EXPECT_EQ(jsonOf({u"net.get \"http://a.example@b.example/\",\"p\""_s}), R"({"network":["anything"]})");
    EXPECT_EQ(jsonOf({u"net.download \"http://a.example/f.zip\",\"\",\"\""_s}),
        R"({"network":["host:a.example"],"write":["program:config/module/download/tmp/"]})");
    EXPECT_EQ(jsonOf({u"file.open \"https://a.example/\""_s}), R"({"network":["host:a.example"]})");
}

TEST(ComputedSheet, knowsTheProgram)
{
    EXPECT_EQ(jsonOf({u"file.open \"notepad.exe\""_s}), R"({"run":["name:notepad.exe"]})");
    EXPECT_EQ(jsonOf({u"file.open \"/usr/bin/gimp\""_s}), R"({"run":["file:/usr/bin/gimp"]})");
    EXPECT_EQ(jsonOf({u"file.open \"_pfold_/readme.txt\""_s}), R"({"run":["app:readme.txt"]})");
    EXPECT_EQ(jsonOf({u"file.open \"_pfold_/tool.exe\""_s}), R"({"run":["anything"]})");
    EXPECT_EQ(jsonOf({u"file.open \"_pfold_/other.wf\""_s}), R"({"run":["anything"]})");
    EXPECT_EQ(jsonOf({u"file.open \"/bin/sh\",\"-c date\""_s}), R"({"run":["anything"]})");
    EXPECT_EQ(jsonOf2({u"os.run date"_s.replace(u"date"_s, u"\"date\""_s)}), R"({"run":["name:date"]})");
    // What it writes it can start.
    EXPECT_EQ(jsonOf2({u"file.write \"/home/me/x\",\"#!\""_s, u"file.open \"/home/me/x\""_s}),
        R"({"run":["anything","file:/home/me/x"],"write":["file:/home/me/x"]})");
}

TEST(ComputedSheet, knowsTheWindowThatKeysGoTo)
{
    EXPECT_EQ(jsonOf2({u"wait.window \"Notes\",5000,w"_s, u"window.set active_window,set.w"_s,
                  u"keyboard.type \"hello\""_s}),
        R"({"input":["keys","windows"],"see":["windows"],"window":"Notes"})");
    // Typed before, or into another one.
    EXPECT_EQ(jsonOf2({u"keyboard.type \"hello\""_s, u"wait.window \"Notes\",5000,w"_s,
                  u"window.set active_window,set.w"_s}),
        R"({"input":["keys","windows"],"see":["windows"]})");
    EXPECT_EQ(jsonOf2({u"wait.window \"Notes\",5000,w"_s, u"when.start set.w,is,3"_s,
                  u"window.set active_window,set.w"_s, u"when.end"_s, u"keyboard.type \"hello\""_s}),
        R"({"input":["keys","windows"],"see":["windows"]})");
    EXPECT_EQ(jsonOf({u"os.窗口最小化 Report"_s}), R"({"input":["windows:=Report"]})");
}

TEST(ComputedSheet, knowsTheSession)
{
    EXPECT_EQ(jsonOf({u"os.lock_screen"_s, u"os.off_monitor"_s, u"os.log_off"_s, u"os.shut_down"_s,
                  u"os.restart"_s}),
        R"({"session":["lock","monitor off","log off","shut down","restart"]})");
}

TEST(ComputedSheet, followsLinesThatTakeWhatStandsAbove)
{
    // Without a blank a line has the arguments of the line before, without a dot its command.
    EXPECT_EQ(
        jsonOf({u"text.x \"/etc/hosts\",\"\",\"t\""_s, u"file.read"_s}), R"({"read":["file:/etc/hosts"]})");
    EXPECT_EQ(jsonOf({u"set.open \"notepad.exe\""_s, u"file"_s}), R"({"run":["name:notepad.exe"]})");
    EXPECT_EQ(jsonOf({u"while.start \"count\",os.get_clipboard"_s, u"time.sleep \"1\""_s, u"while.end"_s}),
        R"({"see":["clipboard"]})");
}

TEST(ComputedSheet, findsReferencesInExpressions)
{
    EXPECT_EQ(jsonOf2({u"calc.set a,\"length(os.get_clipboard)\""_s}), R"({"see":["clipboard"]})");
    EXPECT_EQ(jsonOf2({u"json.get \"{}\",\"a\",e"_s, u"calc.set a,set.e"_s}),
        R"({"read":["given"],"see":["clipboard","pointer"]})");
    EXPECT_EQ(jsonOf2({u"set.e me.enter_input"_s, u"calc.set a,set.e"_s}), "{}");
    EXPECT_EQ(jsonOf2({u"calc.set a,\"1+2\""_s}), "{}");
}

TEST(ComputedSheet, namesOtherPlacesApart)
{
    EXPECT_EQ(jsonOf({u"file.read \"_pfold_/../note/notes.txt\",\"\",\"t\""_s}),
        R"({"read":["apps:note/notes.txt"]})");
    EXPECT_EQ(jsonOf({u"set.t \"x\""_s, u"file.save \"config\\load\\set.ini\",\"t\",\"append\""_s}),
        R"({"write":["program:config/load/set.ini"]})");
    EXPECT_EQ(jsonOf({u"file.read \"_pfold_/../../../../x\",\"\",\"t\""_s}), R"({"read":["anything"]})");
}

TEST(ComputedSheet, readsTheFilesThatAScriptUses)
{
    const QByteArray script = "//edition:2\npart.use \"more.txt\"\npart.run go\n";
    const auto with = [&](const QByteArray &part) {
        return computeSheet({.script = script, .load = [part](const QString &) { return part; }}, allWords());
    };
    const ComputedSheet computed = with("part.start go\nos.lock_screen\npart.end\n");
    EXPECT_EQ(test::inJson(computed.sheet), R"({"session":["lock"]})");
    EXPECT_NE(computed.contentHash, with("part.start go\npart.end\n").contentHash);
    const ComputedSheet missing = computeSheet({.script = script}, allWords());
    EXPECT_FALSE(missing.problem.isEmpty());
    EXPECT_TRUE(missing.sheet.isEmpty());
}

// Marks that stand for folders inside of sheets mean nothing in a script.
TEST(ComputedSheet, isNotFooledByItsOwnMarks)
{
    EXPECT_EQ(jsonOf({u"file.read \"\uFDD1/x.txt\",\"\",\"t\""_s}), R"({"read":["anything"]})");
    EXPECT_EQ(jsonOf2({u"file.exists \"\uFDD1/x.txt\",t"_s}), R"({"read":["anything"]})");
}

TEST(ComputedSheet, endsForVariablesThatGoOnChanging)
{
    EXPECT_EQ(jsonOf({u"while.start \"count\",\"9\""_s, u"set.a a+?++(set.a)"_s, u"while.end"_s,
                  u"file.read set.a,\"\",\"t\""_s}),
        R"({"read":["anything"]})");
    EXPECT_EQ(jsonOf2({u"set.a \"x\""_s, u"repeat.times 9"_s, u"set.a $\"{a}/{a}\""_s, u"repeat.end"_s,
                  u"file.exists set.a,t"_s}),
        R"({"read":["anything"]})");
}

TEST(ComputedSheet, ofAThousandLinesTakesMilliseconds)
{
    QStringList lines;
    for (int i = 0; i < 250; ++i) {
        lines += u"set.v%1 a+?++(set.v%2)"_s.arg(i).arg(i / 2);
        lines += u"text.replace \"t%1\",set.v%1,\"a\",\"b\",\"\",\"\",\"\""_s.arg(i);
        lines += u"file.read _pfold_/+?++(set.v%1),\"\",\"t\""_s.arg(i);
        lines += u"mouse.move \"%1:5\""_s.arg(i);
    }
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(test::sheetOf(lines).isEmpty());
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
}

} // namespace
} // namespace plum
