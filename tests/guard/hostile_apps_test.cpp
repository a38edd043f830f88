// Apps that want more than they were granted, in every way that the language has: each is refused, says so,
// and goes on like after a call that failed.
#include "guard/guard_bench.h"
#include "support/run_witness.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

class HostileApp : public testing::Test
{
protected:
    // Nothing of this kind has happened, and it was said.
    void expectRefused(const QString &event)
    {
        for (const QString &each : app.events())
            EXPECT_FALSE(each.startsWith(event)) << each.toStdString();
        EXPECT_FALSE(app.refused.isEmpty())
            << app.error.toStdString() << app.events().join(u"|"_s).toStdString();
    }

    // A file that is not in Plum's folder.
    static QString write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return path;
    }

    test::GuardBench app;
};

constexpr const char *nothing = "{}";

TEST_F(HostileApp, hidesAPathInATemplate)
{
    app.write(u"config/load/secret.txt"_s, "secret");
    app.bench.platform.clipboard().content = u"../../load/secret.txt"_s;
    // What is computed is the app's folder: the clipboard's text leads out of it.
    app.run({u"os.get_clipboard \"p\""_s, u"file.read _pfold_/+?++(set.p),\"\",\"t\""_s, u"os.tips set.t"_s});
    EXPECT_EQ(app.refused.size(), 1);
    EXPECT_TRUE(app.events().contains(u"tip "_s)) << app.events().join(u'|').toStdString();
}

TEST_F(HostileApp, isObservedEachTimeItIsRefused)
{
    test::RunWitness witness;
    app.bench.state.observer = &witness;
    app.run({u"mouse.move \"1:2\""_s, u"mouse.move \"1:2\""_s}, nothing);
    EXPECT_EQ(app.refused.size(), 1);
    const QString refused = u"refused "_s + app.refused.value(0);
    EXPECT_EQ(witness.heard.count(refused), 2) << witness.heard.join(u'|').toStdString();
}

TEST_F(HostileApp, splitsAPathOverVariables)
{
    app.write(u"config/load/set.ini"_s, "secret");
    const QStringList script{u"set.a \"config\\lo\""_s, u"set.b \"ad\\set.ini\""_s,
        u"set.c +?++?++(set.a+set.b)"_s, u"file.read set.c,\"\",\"t\""_s, u"os.tips set.t"_s};
    app.run(script, R"({"read":["anything"]})");
    expectRefused(u"tip secret"_s);
    // Computed, the sheet names the file.
    app.run(script);
    EXPECT_EQ(app.granted.find(Effect::ReadFile)->objects, QStringList(u"program:config/load/set.ini"_s));
}

TEST_F(HostileApp, goesBesideTheDroppedFile)
{
    app.write(u"desktop/a"_s, "mine");
    app.write(u"desktop/a.key"_s, "secret");
    app.bench.state.droppedPath = app.path(u"desktop/a"_s);
    app.run({u"file.read me.drag,\"\",\"t\""_s, u"file.read +?+.key+(me.drag),\"\",\"u\""_s,
                u"os.tips a+?+b+?+c+(set.t+set.u)"_s},
        R"({"read":["given"]})");
    EXPECT_TRUE(app.happened(u"tip aminebc"_s)) << app.events().join(u'|').toStdString();
    EXPECT_EQ(app.refused.size(), 1);
}

TEST_F(HostileApp, goesAboveWhatWasTyped)
{
    const QTemporaryDir folder; // Plum's own is never part of what is given
    write(folder.filePath(u"a.key"_s), "secret");
    const QString typed = write(folder.filePath(u"a.key.txt"_s), "mine");
    const char *given = R"({"read":["given"],"write":["given"]})";
    const QStringList cut{u"input.enter_1 \".txt\",p"_s, u"file.read set.p,,t"_s, u"os.tips set.t"_s};
    for (const auto &give :
        std::initializer_list<std::function<void()>>{[&] { app.bench.launcher.keywordBox = u"x "_s + typed; },
            [&] { app.bench.state.droppedPath = typed; }, [&] { app.bench.state.answers = {typed}; }}) {
        app.bench.launcher.keywordBox = u"x"_s;
        app.bench.state.droppedPath.clear();
        app.bench.state.answers.clear();
        give();
        app.run2({u"file.list \"%1\",,names"_s.arg(folder.path()), u"os.tips set.names"_s}, given);
        expectRefused(u"tip"_s);
        app.run2({u"file.read \"%1\",,t"_s.arg(folder.filePath(u"a.key"_s)), u"os.tips set.t"_s}, given);
        expectRefused(u"tip"_s);
        app.run2({u"file.write \"%1\",\"x\""_s.arg(folder.filePath(u"a"_s))}, given);
        EXPECT_EQ(app.refused.size(), 1);
        EXPECT_FALSE(QFile::exists(folder.filePath(u"a"_s)));
        app.run2({u"file.read \"%1\",,t"_s.arg(typed), u"os.tips set.t"_s}, given);
        EXPECT_TRUE(app.happened(u"tip mine"_s)) << app.error.toStdString();
    }
    app.bench.launcher.keywordBox = u"x "_s + typed;
    app.run2(cut, given);
    expectRefused(u"tip"_s);
    // Computed, the sheet says what such a cut can come to.
    app.run2(cut);
    EXPECT_TRUE(app.granted.find(Effect::ReadFile)->anything);
    app.run({u"input.enter_1 \".txt\",\"p\""_s, u"file.read set.p,\"\",\"t\""_s});
    EXPECT_TRUE(app.granted.find(Effect::ReadFile)->anything);
    // What stands between the signs of a list was typed.
    app.bench.launcher.keywordBox = u"x first,%1"_s.arg(typed);
    app.run2({u"input.enter_2 \",\",p"_s, u"file.read set.p,,t"_s, u"os.tips set.t"_s});
    EXPECT_FALSE(app.granted.find(Effect::ReadFile)->anything);
    EXPECT_TRUE(app.happened(u"tip mine"_s)) << app.error.toStdString();
}

TEST_F(HostileApp, downloadsBesideTheFolderThatWasTyped)
{
    const QTemporaryDir folder;
    app.bench.launcher.keywordBox = u"x "_s + folder.filePath(u"here"_s);
    const char *sheet = R"({"network":["host:a.example"],"write":["given"]})";
    const QString line = u"net.download \"http://a.example/x\",me.enter_input,\"%1\",\"\""_s;
    app.run({line.arg(u"x.zip"_s)}, sheet);
    EXPECT_TRUE(app.refused.isEmpty()) << app.refused.join(u'|').toStdString();
    app.run({line.arg(u"../x.zip"_s)}, sheet);
    expectRefused(u"helper"_s);
    app.run({u"net.download \"http://a.example/x\",\"%1\",\"x.zip\",\"\""_s.arg(folder.path())}, sheet);
    expectRefused(u"helper"_s);
}

TEST_F(HostileApp, takesAPartOfWhatWasTypedForTheWhole)
{
    app.bench.launcher.keywordBox = u"x http://a.example/?next=http://b.example/"_s;
    const char *sheet = R"({"network":["given"],"run":["given"],"input":["paste:given","windows:given"]})";
    for (const QString &url : {u"http://b.example/"_s, u"http://a"_s, u"http://a.example.b.example/"_s}) {
        app.run({u"net.get \"%1\",\"p\""_s.arg(url)}, sheet);
        expectRefused(u"get"_s);
        app.run({u"file.open \"%1\",\"\",\"\""_s.arg(url)}, sheet);
        expectRefused(u"open"_s);
    }
    app.run({u"net.get \"http://a.example/other\",\"p\""_s}, sheet);
    EXPECT_TRUE(app.happened(u"get http://a.example/other"_s));

    app.bench.launcher.keywordBox = u"x /usr/bin/xterm.txt"_s;
    for (const QString &program : {u"/usr/bin/xterm"_s, u"xterm"_s, u"/usr/bin"_s}) {
        app.run({u"file.open \"%1\",\"\",\"\""_s.arg(program)}, sheet);
        expectRefused(u"open"_s);
        app.run2({u"os.run \"%1\""_s.arg(program)}, sheet);
        expectRefused(u"run"_s);
    }
    app.run({u"keyboard.send \"xterm\""_s}, sheet);
    expectRefused(u"clipboard set xterm"_s);
    app.run({u"os.窗口最小化 xterm"_s}, sheet);
    EXPECT_EQ(app.refused.size(), 1);
}

TEST_F(HostileApp, readsWhatToDoFromAFileThatItWrote)
{
    const QStringList script{u"set.p \"/usr/bin/xterm\""_s,
        u"file.save os.path_package/list.txt,\"p\",\"append\""_s,
        u"file.save +?+/list.txt+(os.path_package),\"p\",\"append\""_s,
        u"file.read \"_pfold_/list.txt\",\"1\",\"q\""_s, u"file.open set.q,\"\",\"\""_s};
    app.run(script, R"({"write":["app:"],"read":["app:"]})");
    EXPECT_EQ(app.content(u"config/apps/x/list.txt"_s), "/usr/bin/xterm\r\n");
    expectRefused(u"open"_s);
    app.run(script);
    EXPECT_TRUE(app.granted.find(Effect::Run)->anything);
}

TEST_F(HostileApp, rewritesItsOwnScript)
{
    for (const QString &name : {u"main.wf"_s, u"MAIN.WF"_s, u"deep.wf"_s}) {
        app.bench.platform.clipboard().content = name;
        app.run2({u"os.get_clipboard n"_s, u"file.write $\"{os.path_package}/{n}\",\"os.shut_down\""_s});
        EXPECT_EQ(app.refused.size(), 1) << name.toStdString();
        EXPECT_FALSE(app.content(u"config/apps/x/"_s + name).startsWith("os.shut_down"));
    }
}

TEST_F(HostileApp, changesWhatItWasGranted)
{
    app.write(u"config/load/grants.json"_s, "{}");
    for (const char *sheet :
        {R"({"write":["program:config/load/grants.json"]})", R"({"write":["anything"]})"}) {
        app.run2({u"file.write \"config/load/grants.json\",\"all\""_s}, sheet);
        EXPECT_EQ(app.content(u"config/load/grants.json"_s), "{}") << sheet;
        EXPECT_EQ(app.refused.size(), 1) << sheet;
    }
}

TEST_F(HostileApp, goesWhereAnythingIsNot)
{
    app.write(u"config/apps/note/notes.txt"_s, "secret");
    qputenv("XDG_CONFIG_HOME", app.path(u"home"_s).toUtf8());
    QDir(app.folder.path()).mkpath(u"home/autostart"_s);
    for (const QString &path : {u"config/apps/note/notes.txt"_s, u"config/module/net/browser/browser.exe"_s,
             app.path(u"home/autostart/x.desktop"_s), u"_pfold_/../note/notes.txt"_s, u"plum"_s}) {
        app.run2({u"file.write \"%1\",\"all\""_s.arg(path)}, R"({"write":["anything"],"read":["anything"]})");
        EXPECT_EQ(app.refused.size(), 1) << path.toStdString();
        app.run2({u"file.exists \"%1\",there"_s.arg(path)}, R"({"write":["anything"],"read":["anything"]})");
        EXPECT_EQ(app.refused.size(), 1) << path.toStdString();
    }
    qunsetenv("XDG_CONFIG_HOME");
}

TEST_F(HostileApp, followsALinkOutOfItsFolder)
{
    app.write(u"desktop/secret.txt"_s, "secret");
    ASSERT_TRUE(QFile::link(app.path(u"desktop"_s), app.path(u"config/apps/x/link"_s)));
    if (!QFileInfo(app.path(u"config/apps/x/link"_s)).isSymbolicLink())
        GTEST_SKIP() << "Links of this system are files that the desktop alone follows.";
    ASSERT_TRUE(QFile::link(app.path(u"desktop/new.txt"_s), app.path(u"config/apps/x/dangling.txt"_s)));
    app.run(
        {u"file.read \"_pfold_/link/secret.txt\",\"\",\"t\""_s, u"os.tips set.t"_s}, R"({"read":["app:"]})");
    expectRefused(u"tip secret"_s);
    app.run2({u"file.write \"_pfold_/dangling.txt\",\"x\""_s}, R"({"write":["app:"]})");
    EXPECT_FALSE(QFile::exists(app.path(u"desktop/new.txt"_s)));
}

TEST_F(HostileApp, startsSomethingOfItsPackage)
{
    app.write(u"config/apps/x/readme.txt"_s, "read me");
    app.write(u"config/apps/x/tool.sh"_s, "#!/bin/sh");
    app.run({u"file.open \"_pfold_/readme.txt\",\"\",\"\""_s});
    EXPECT_TRUE(app.refused.isEmpty());
    const char *readme = R"({"run":["app:readme.txt"]})";
    for (const QString &path :
        {u"_pfold_/tool.sh"_s, u"_pfold_/main.wf"_s, u"_pfold_/readme.txt/../tool.sh"_s}) {
        app.run({u"file.open \"%1\",\"\",\"\""_s.arg(path)}, readme);
        expectRefused(u"open"_s);
        app.run({u"file.call \"%1\",\"\",\"html\",\"\""_s.arg(path)}, readme);
        expectRefused(u"open"_s);
        app.run2({u"os.run \"%1\""_s.arg(path)}, readme);
        expectRefused(u"run"_s);
        EXPECT_FALSE(app.error.isEmpty());
    }
}

TEST_F(HostileApp, usesJavaScript)
{
    app.write(u"config/apps/x/a.js"_s, "function f() { return 1 }");
    app.run({u"file.call_js \"_pfold_/a.js\",\"f\",\"\",\"v\""_s}, R"({"read":["app:"]})");
    expectRefused(u"evaluate"_s);
    app.run({u"file.call_js \"http://a.example/a.js\",\"f\",\"\",\"v\""_s}, R"({"run":["javascript"]})");
    expectRefused(u"get"_s);
}

TEST_F(HostileApp, sendsAPageThroughTheClipboardChannel)
{
    const QString page = u"##tarnwick:send##<script>1</script>"_s;
    app.bench.launcher.keywordBox = u"x hello"_s;
    for (const char *sheet : {nothing, R"({"see":["clipboard"]})", R"({"input":["paste:given"]})"}) {
        app.run({u"os.set_clipboard \"%1\""_s.arg(page)}, sheet);
        expectRefused(u"clipboard set"_s);
    }
    app.run({u"print.html \"%1\""_s.arg(page)}, nothing);
    expectRefused(u"helper"_s);
    app.run({u"keyboard.send me.enter_input"_s}, R"({"input":["paste:given"]})");
    EXPECT_TRUE(app.refused.isEmpty()) << app.refused.join(u'|').toStdString();
    EXPECT_TRUE(app.happened(u"clipboard set hello"_s));
}

TEST_F(HostileApp, contactsSomebodyElse)
{
    app.bench.platform.clipboard().content = u"b.example"_s;
    const char *sheet = R"({"network":["host:a.example"],"see":["clipboard"]})";
    for (const QString &url : {u"http://b.example/"_s, u"http://a.example@b.example/"_s,
             u"http://a.example.b.example/"_s, u"https:\\\\b.example\\a.example"_s}) {
        app.run({u"net.get \"%1\",\"p\""_s.arg(url)}, sheet);
        expectRefused(u"get"_s);
        app.run({u"net.upload \"%1\",\"_pfold_/main.wf\",\"f\",\"\",\"v\""_s.arg(url)}, sheet);
        expectRefused(u"post"_s);
        app.run({u"net.download \"%1\",\"\",\"\",\"\""_s.arg(url)}, sheet);
        expectRefused(u"helper"_s);
        app.run({u"webbox.url \"%1\",\"\""_s.arg(url)}, sheet);
        expectRefused(u"helper"_s);
        app.run({u"file.open \"%1\",\"\",\"\""_s.arg(url)}, sheet);
        expectRefused(u"open"_s);
        app.run2({u"net.request get,\"%1\""_s.arg(url)}, sheet);
        expectRefused(u"request"_s);
    }
    app.run({u"webbox.html \"<img src=http://b.example>\",\"\""_s}, sheet);
    expectRefused(u"helper"_s);
    app.run({u"net.get \"http://a.example/x\",\"p\""_s}, sheet);
    EXPECT_TRUE(app.happened(u"get http://a.example/x"_s));
}

TEST_F(HostileApp, looksAround)
{
    app.bench.platform.clipboard().content = u"secret"_s;
    app.bench.platform.windows().foregroundWindow = 7;
    app.bench.platform.screen().size = {1, 1};
    app.bench.platform.screen().pixels = {0};
    app.run({u"os.get_clipboard \"a\""_s, u"set.b os.get_clipboard"_s,
                u"window.get \"active_window\",\"c\""_s, u"set.d mouse.xy"_s,
                u"os.find_color \"000000\",\"0:0:1:1\",\"\",\"e\""_s, u"os.tips a+?+?+?+?+(set.a)"_s},
        nothing);
    EXPECT_EQ(app.refused.size(), 4) << app.refused.join(u'\n').toStdString(); // the clipboard once
    for (const QString &event : app.events())
        EXPECT_FALSE(event.contains(u"secret"_s)) << event.toStdString();
}

TEST_F(HostileApp, usesHandsThatItWasNotGiven)
{
    for (const QString &line : {u"keyboard.key \"a\""_s, u"keyboard.hotkey \"ctrl\",\"v\""_s,
             u"keyboard.key_down \"a\""_s, u"keyboard.send \"rm\""_s}) {
        app.run({line}, nothing);
        for (const QString &event : app.events())
            EXPECT_FALSE(event.startsWith(u"key"_s) && !event.endsWith(u" 2"_s)) << event.toStdString();
        EXPECT_FALSE(app.refused.isEmpty()) << line.toStdString();
    }
    for (const QString &line : {u"mouse.click"_s, u"mouse.move \"1:1\""_s, u"mouse.drag \"1:1\",\"2:2\""_s,
             u"mouse.after_offset \"1:1\",\"1:1\",\"click\""_s, u"mouse.r_down"_s}) {
        app.run({line}, nothing);
        expectRefused(u"mo"_s); // mouse, move
    }
    app.run({u"window.set \"close\",\"7\""_s}, nothing);
    expectRefused(u"window"_s);
    app.run2({u"keyboard.type \"rm\""_s}, nothing);
    expectRefused(u"type"_s);
}

TEST_F(HostileApp, pressesKeysInAnotherWindow)
{
    const char *sheet = R"({"input":["keys","mouse"],"window":"Notes"})";
    auto &windows = app.bench.platform.windows();
    windows.titles = {{u"Notes"_s, 5}};
    windows.rectangles = {{5, QRect(0, 0, 100, 100)}};
    windows.foregroundWindow = 6;
    app.run({u"keyboard.key \"a\""_s, u"mouse.click"_s}, sheet);
    EXPECT_FALSE(app.happened(u"key 65 1"_s));
    EXPECT_FALSE(app.happened(u"mouse 2"_s));
    windows.foregroundWindow = 5;
    app.run({u"keyboard.key \"a\""_s, u"mouse.click"_s}, sheet);
    EXPECT_TRUE(app.happened(u"key 65 1"_s));
    EXPECT_TRUE(app.happened(u"mouse 2"_s));
    app.bench.platform.pointer().at = {500, 500};
    app.run({u"mouse.click"_s}, sheet);
    EXPECT_FALSE(app.happened(u"mouse 2"_s));
}

TEST_F(HostileApp, endsTheSession)
{
    for (const QString &line :
        {u"os.lock_screen"_s, u"os.off_monitor"_s, u"os.log_off"_s, u"os.shut_down"_s, u"os.restart"_s}) {
        app.run({line, u"os.tips \"on\""_s}, nothing);
        EXPECT_EQ(app.refused.size(), 1);
        EXPECT_TRUE(app.happened(u"tip on"_s)) << app.events().join(u'|').toStdString();
        EXPECT_EQ(app.error, QString());
        app.run2({line}, nothing);
        EXPECT_FALSE(app.error.isEmpty()) << line.toStdString();
    }
}

TEST_F(HostileApp, ofEdition2CanCatchTheErrorAndGetsNothing)
{
    app.bench.platform.clipboard().content = u"secret"_s;
    app.run2({u"try.start"_s, u"    set.a os.get_clipboard"_s, u"    os.tips set.a"_s, u"try.failed why"_s,
                 u"    os.tips set.why"_s, u"try.end"_s},
        nothing);
    EXPECT_TRUE(app.happened(u"tip not allowed for x: reading the clipboard"_s))
        << app.events().join(u'|').toStdString();
}

TEST_F(HostileApp, movesFilesThatAreNotItsOwn)
{
    app.write(u"desktop/a.txt"_s, "mine");
    app.run2({u"file.move \"_pfold_/../../../desktop/a.txt\",\"_pfold_/a.txt\""_s},
        R"({"read":["anything"],"write":["app:"]})");
    EXPECT_TRUE(QFile::exists(app.path(u"desktop/a.txt"_s)));
    EXPECT_FALSE(app.refused.isEmpty());
}

} // namespace
} // namespace plum
