#include "desktop/support/launcher_desktop.h"
#include "desktop/support/screen_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Somebody who has only the keyboard, and hears what the launcher says.
class AfternoonTest : public LauncherDesktop
{
protected:
    void SetUp() override
    {
        LauncherDesktop::SetUp();
        ASSERT_TRUE(QFile::remove(programFolder() + u"/config/load/set.ini"_s));
        reader.emplace(server());
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    }

    void TearDown() override
    {
        reader.reset();
        LauncherDesktop::TearDown();
        qunsetenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
    }

    bool hears(const QString &role, const QString &beginning, const QString &state = {})
    {
        const bool isHeard = eventually([&] {
            return std::ranges::any_of(reader->look(), [&](const Node &node) {
                return node.role == role && node.name.startsWith(beginning)
                    && (state.isEmpty() || node.is(state));
            });
        });
        if (!isHeard) {
            for (const Node &node : reader->look())
                std::cerr << node.role.toStdString() << " \"" << node.name.toStdString() << "\" "
                          << node.states.join(u' ').toStdString() << '\n';
        }
        return isHeard;
    }

    bool hearsNoMore(const QString &role, const QString &beginning)
    {
        return eventually([&] { return reader->find(role, beginning).role.isEmpty(); });
    }

    // A box with these words, which Enter closes.
    void expectBox(const QString &words)
    {
        ASSERT_TRUE(hears(u"label"_s, words)) << words.toStdString();
        ASSERT_TRUE(hears(u"push button"_s, u"OK"_s, u"focused"_s));
        hands->key(u"Return"_s);
        ASSERT_TRUE(hearsNoMore(u"label"_s, words)) << words.toStdString();
    }

    // With the keyboard in the keyword box; the list has it afterwards.
    void goToListWith(const QString &keyword)
    {
        ASSERT_TRUE(hears(u"text"_s, u"Keyword"_s, u"focused"_s));
        clearEntry();
        hands->key(u"Down"_s);
        ASSERT_TRUE(hears(u"list item"_s, keyword, u"selected"_s));
    }

    void makePackage(const QByteArray &script)
    {
        write(u"main.wf"_s, script);
        QFile::remove(folder() + u"/chess.wfp"_s);
        outputOf(u"zip"_s, {u"-q"_s, u"-j"_s, folder() + u"/chess.zip"_s, programFolder() + u"/main.wf"_s});
        ASSERT_TRUE(QFile::rename(folder() + u"/chess.zip"_s, folder() + u"/chess.wfp"_s));
    }

    // What opening a package on the desktop does.
    void openPackage()
    {
        write(u"config/load/requests/1.request"_s, (folder() + u"/chess.wfp"_s).toUtf8());
        QProcess second;
        server().start(second, programFolder() + u"/plum"_s, {});
        ASSERT_TRUE(second.waitForFinished());
    }

    // The dialog counts an answer from half a second on.
    void agree()
    {
        ASSERT_TRUE(eventually([&] {
            hands->key(u"Return"_s);
            return reader->find(u"label"_s, u"Install this app"_s).role.isEmpty();
        }));
    }

    // Goes on with Tab until the control has the keyboard.
    void tabTo(const QString &role, const QString &name)
    {
        constexpr int mostStops = 20;
        for (int stop = 0; stop < mostStops && !reader->find(role, name).is(u"focused"_s); ++stop)
            hands->key(u"Tab"_s);
        expectKeyboardAt(role, name);
    }

    void expectKeyboardAt(const QString &role, const QString &name)
    {
        ASSERT_TRUE(hears(role, name, u"focused"_s)) << name.toStdString();
    }

    std::optional<ScreenReader> reader;
};

} // namespace

TEST_F(AfternoonTest, anAppIsCreatedRunFailsIsMendedAndRenamed)
{
    startLauncher();
    ASSERT_TRUE(hears(u"frame"_s, u"Plum"_s));
    expectKeyboardAt(u"text"_s, u"Keyword"_s);

    hands->type(u"count"_s);
    ASSERT_TRUE(hears(u"label"_s, u"No app has this keyword. Create it? (Ctrl+N)"_s));
    hands->key(u"ctrl+n"_s);
    expectKeyboardAt(u"text"_s, u"Script"_s);
    ASSERT_TRUE(hears(u"panel"_s, u"New app"_s));
    hands->type(u"set.word \"ran\""_s);
    hands->key(u"F5"_s);
    expectBox(u"Successfully"_s);
    ASSERT_TRUE(hears(u"label"_s, u"count: done"_s));

    // A mistake ends edition 1's process, and says where and why before.
    expectKeyboardAt(u"text"_s, u"Keyword"_s);
    hands->key(u"ctrl+e"_s);
    expectKeyboardAt(u"text"_s, u"Script"_s);
    hands->key(u"ctrl+a"_s);
    hands->type(u"time.sleep \"abc\""_s);
    hands->key(u"F5"_s);
    expectBox(u"Successfully"_s);
    ASSERT_TRUE(eventually([&] {
        for (const Node &node : reader->look()) {
            if (node.name.contains(u"\"abc\" is not a number of milliseconds"_s)
                && node.name.contains(u"count"_s) && node.name.contains(u"line 1"_s))
                return true;
        }
        return false;
    }));
    hands->key(u"Return"_s);
    ASSERT_TRUE(eventually([&] { return !isRunning(); }));

    startLauncher();
    hands->type(u"count"_s);
    ASSERT_TRUE(hears(u"list item"_s, u"count"_s));
    hands->key(u"ctrl+e"_s);
    expectKeyboardAt(u"text"_s, u"Script"_s);
    hands->key(u"ctrl+a"_s);
    hands->type(u"time.sleep \"20\""_s);
    hands->key(u"F5"_s);
    expectBox(u"Successfully"_s);
    ASSERT_TRUE(hears(u"label"_s, u"count: done"_s));

    goToListWith(u"count"_s);
    hands->key(u"F2"_s);
    expectKeyboardAt(u"text"_s, u"New keyword"_s);
    hands->type(u"tally"_s);
    hands->key(u"Return"_s);
    expectBox(u"Successfully"_s);
    ASSERT_TRUE(hears(u"list item"_s, u"tally"_s));
    ASSERT_TRUE(hearsNoMore(u"list item"_s, u"count"_s));
}

TEST_F(AfternoonTest, anAppIsInstalledUpdatedAndDeleted)
{
    startLauncher();
    makePackage("//guide:Plays chess\r\n");
    openPackage();
    ASSERT_TRUE(hears(u"label"_s, u"Install this app?"_s));
    ASSERT_TRUE(hears(u"label"_s, u"chess"_s));
    agree();
    expectBox(u"Successfully"_s);
    ASSERT_TRUE(
        eventually([&] { return reader->find(u"list item"_s, u"chess"_s).description == u"Plays chess"_s; }));

    makePackage("//guide:Plays better\r\n");
    openPackage();
    ASSERT_TRUE(hears(u"label"_s, u"chess  already exists"_s));
    expectKeyboardAt(u"text"_s, u"Keyword"_s);
    tabTo(u"push button"_s, u"Replace the existing app"_s);
    hands->key(u"space"_s);
    ASSERT_TRUE(hears(u"label"_s, u"Install this app in place of the one that is there?"_s));
    agree();
    expectBox(u"Successfully"_s);
    ASSERT_TRUE(eventually(
        [&] { return reader->find(u"list item"_s, u"chess"_s).description == u"Plays better"_s; }));

    goToListWith(u"chess"_s);
    hands->key(u"Delete"_s);
    ASSERT_TRUE(hears(u"label"_s, u"确定删除?"_s));
    ASSERT_TRUE(hears(u"label"_s, u"Delete \"chess\"?"_s));
    expectKeyboardAt(u"push button"_s, u"No"_s);
    hands->key(u"shift+Tab"_s);
    expectKeyboardAt(u"push button"_s, u"Yes"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(hearsNoMore(u"list item"_s, u"chess"_s));
}

TEST_F(AfternoonTest, aHotkeyIsChosenAndTheLauncherIsLostAndFound)
{
    startLauncher();
    ASSERT_TRUE(hears(u"label"_s, u"No hotkey yet. Choose one"_s));
    hands->key(u"Tab"_s);
    hands->key(u"Tab"_s);
    expectKeyboardAt(u"label"_s, u"No hotkey yet."_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(hears(u"dialog"_s, u"Hotkey"_s));
    tabTo(u"radio button"_s, u"Alt"_s);
    hands->key(u"Right"_s);
    expectKeyboardAt(u"radio button"_s, u"Ctrl"_s);
    hands->key(u"space"_s);
    ASSERT_TRUE(hears(u"radio button"_s, u"Ctrl"_s, u"checked"_s));
    tabTo(u"combo box"_s, u"Letter of the hotkey"_s);
    hands->type(u"j"_s);
    tabTo(u"push button"_s, u"Use this hotkey"_s);
    hands->key(u"space"_s);
    ASSERT_TRUE(hears(u"label"_s, u"Ctrl+J shows Plum"_s));

    expectKeyboardAt(u"text"_s, u"Keyword"_s);
    hands->key(u"Escape"_s);
    ASSERT_TRUE(hearsNoMore(u"text"_s, u"Keyword"_s));
    hands->key(u"ctrl+j"_s);
    expectKeyboardAt(u"text"_s, u"Keyword"_s);
}

TEST_F(AfternoonTest, menusAreReadAndEveryNodeHasAName)
{
    writeApp(u"alpha"_s, {u"//guide:Says hello"_s});
    startLauncher();
    hands->key(u"Down"_s);
    ASSERT_TRUE(hears(u"list item"_s, u"alpha"_s, u"focused"_s));
    const Node row = reader->find(u"list item"_s, u"alpha"_s);
    EXPECT_TRUE(row.actions.contains(u"run"_s) && row.actions.contains(u"edit"_s));
    hands->key(u"shift+F10"_s);
    ASSERT_TRUE(hears(u"popup menu"_s, u"Menu of the app"_s));
    ASSERT_TRUE(hears(u"menu item"_s, u"Rename"_s));
    for (const Node &node : reader->look()) {
        EXPECT_TRUE(!node.name.isEmpty() || node.role == u"separator" || node.role == u"filler")
            << node.role.toStdString() << " has no name";
    }
    hands->key(u"Escape"_s);
    ASSERT_TRUE(hearsNoMore(u"popup menu"_s, u"Menu of the app"_s));
}

} // namespace plum
