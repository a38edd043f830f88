#include "desktop/support/heard_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The first afternoon with the launcher.
class AfternoonTest : public HeardDesktop
{
protected:
    void SetUp() override
    {
        HeardDesktop::SetUp();
        ASSERT_TRUE(QFile::remove(programFolder() + u"/config/load/set.ini"_s));
    }

    // A box with these words, which Enter closes.
    void expectBox(const QString &words)
    {
        ASSERT_TRUE(hears(u"label"_s, words)) << words.toStdString();
        ASSERT_TRUE(hears(u"push button"_s, u"OK"_s, u"focused"_s));
        hands->key(u"Return"_s);
        ASSERT_TRUE(hearsNoMore(u"label"_s, words)) << words.toStdString();
    }

    // Every node that is shown says what it is and takes room; a window that is just changing may be asked
    // again.
    void expectWholeTree(const char *window)
    {
        std::vector<Node> nodes;
        const auto isHollow = [](const Node &node) {
            const bool isPart
                = node.role == u"separator" || node.role == u"filler" || node.role == u"scroll bar";
            return node.role.isEmpty() || (node.name.isEmpty() && !isPart) || node.size.isEmpty();
        };
        const bool isWhole = eventually([&] {
            nodes = reader->look();
            return !nodes.empty() && std::ranges::none_of(nodes, isHollow);
        });
        if (isWhole)
            return;
        EXPECT_FALSE(nodes.empty()) << window;
        for (const Node &node : nodes) {
            if (isHollow(node))
                ADD_FAILURE() << window << ": " << node.role.toStdString() << " \"" << node.name.toStdString()
                              << "\" of " << node.size.width() << 'x' << node.size.height();
        }
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
        ASSERT_TRUE(second.waitForFinished(test::patience));
    }

    void agree()
    {
        expectKeyboardAt(u"push button"_s, u"Install"_s);
        ASSERT_TRUE(
            answersWhenRipe([&] { return !reader->find(u"label"_s, u"Install this app"_s).role.isEmpty(); },
                [&] { hands->key(u"Return"_s); }));
    }
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
    expectKeyboardAt(u"push button"_s, u"OK"_s);
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

TEST_F(AfternoonTest, aMistakeIsHeardWhileItIsTypedAndAWordIsOffered)
{
    startLauncher();
    hands->type(u"count"_s);
    ASSERT_TRUE(hears(u"label"_s, u"No app has this keyword. Create it? (Ctrl+N)"_s));
    hands->key(u"ctrl+n"_s);
    expectKeyboardAt(u"text"_s, u"Script"_s);
    hands->type(u"mouse.clik"_s);
    const QString sentence = u"mouse has no command \"clik\""_s;
    ASSERT_TRUE(hears(u"label"_s, sentence));
    EXPECT_TRUE(
        eventually([&] { return reader->find(u"text"_s, u"Script"_s).description.startsWith(sentence); }));
    hands->key(u"BackSpace"_s);
    hands->key(u"BackSpace"_s);
    hands->type(u"i"_s);
    ASSERT_TRUE(hears(u"list item"_s, u"click"_s, u"selected"_s));
    hands->key(u"Return"_s);
    ASSERT_TRUE(eventually([&] { return reader->find(u"text"_s, u"Script"_s).text == u"mouse.click"_s; }));
    EXPECT_TRUE(hearsNoMore(u"label"_s, sentence));
    expectKeyboardAt(u"text"_s, u"Script"_s);
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
    tabTo(u"push button"_s, u"Cancel"_s);
    hands->key(u"space"_s);
    ASSERT_TRUE(hearsNoMore(u"label"_s, u"chess  already exists"_s));
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

// Neither a hotkey nor a tray icon brings it back.
TEST_F(AfternoonTest, theLauncherThatAnAppHidIsFoundByStartingPlumAgain)
{
    writeApp(u"away"_s, {u"me.hide"_s});
    startLauncher();
    hands->type(u"away"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(hears(u"label"_s, u"Plum is hidden. Start it again to bring it back"_s));
    ASSERT_TRUE(hearsNoMore(u"text"_s, u"Keyword"_s));
    QProcess second;
    server().start(second, programFolder() + u"/plum"_s, {});
    ASSERT_TRUE(second.waitForFinished());
    expectKeyboardAt(u"text"_s, u"Keyword"_s);
}

TEST_F(AfternoonTest, inAChineseSessionEvenTheReasonOfAFailureIsChinese)
{
    writeApp(u"notes"_s, {u"//edition:2"_s, u"file.read \"none.txt\",all,text"_s});
    qputenv("LC_ALL", "zh_CN.UTF-8");
    startLauncher();
    qputenv("LC_ALL", "C.UTF-8");
    expectKeyboardAt(u"text"_s, u"关键词"_s);
    hands->type(u"notes"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(hears(u"label"_s, u"notes，第 2 行第 1 列：none.txt 无法读取"_s));
    ASSERT_TRUE(hears(u"push button"_s, u"确定"_s, u"focused"_s));
    hands->key(u"Return"_s);
    expectKeyboardAt(u"text"_s, u"关键词"_s);
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
    expectWholeTree("the menu");
    hands->key(u"Escape"_s);
    ASSERT_TRUE(hearsNoMore(u"popup menu"_s, u"Menu of the app"_s));
}

TEST_F(AfternoonTest, noWindowHasEmptyOrPhantomNodes)
{
    writeApp(u"ask"_s, {u"input.text \"who\",\"Your name?\""_s, u"os.tips \"Hello\""_s});
    startLauncher();
    expectWholeTree("the launcher");
    const auto leave = [this](const QString &window) {
        ASSERT_TRUE(eventually([&] { return view->hasKeyboard(see(window).id); })) << window.toStdString();
        hands->key(u"Escape"_s);
        ASSERT_TRUE(disappears(window)) << window.toStdString();
        ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    };
    hands->key(u"F1"_s);
    ASSERT_TRUE(appears(u"manual/manual"_s));
    expectWholeTree("the manual");
    leave(u"manual/manual"_s);
    hands->key(u"shift+F1"_s);
    ASSERT_TRUE(appears(u"keysheet/keysheet"_s));
    expectWholeTree("the page of keys");
    leave(u"keysheet/keysheet"_s);
    hands->key(u"Tab"_s);
    hands->key(u"Tab"_s);
    expectKeyboardAt(u"label"_s, u"No hotkey yet."_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(appears(u"hotkey/hotkey"_s));
    expectWholeTree("the hotkey window");
    leave(u"hotkey/hotkey"_s);

    hands->key(u"ctrl+n"_s);
    expectKeyboardAt(u"text"_s, u"Keyword"_s);
    ASSERT_TRUE(hears(u"panel"_s, u"New app"_s));
    expectWholeTree("the editor");
    hands->key(u"Escape"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    goToListWith(u"ask"_s);
    hands->key(u"F2"_s);
    expectKeyboardAt(u"text"_s, u"New keyword"_s);
    expectWholeTree("the panel for renaming");
    hands->key(u"Escape"_s);
    goToListWith(u"ask"_s);
    hands->key(u"Delete"_s);
    expectKeyboardAt(u"push button"_s, u"No"_s);
    expectWholeTree("the question before a deletion");
    hands->key(u"Escape"_s);
    ASSERT_TRUE(hearsNoMore(u"push button"_s, u"No"_s));

    hands->type(u"ask"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s));
    hands->key(u"Return"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    expectWholeTree("a question");
    hands->key(u"Return"_s);
    ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
    expectWholeTree("a tip");
    leave(u"shurubox/shurubox"_s);

    makePackage("//guide:Plays chess\r\n");
    openPackage();
    ASSERT_TRUE(hears(u"label"_s, u"Install this app?"_s));
    expectWholeTree("the question before an install");
    agree();
    expectBox(u"Successfully"_s);
    openPackage();
    ASSERT_TRUE(hears(u"label"_s, u"chess  already exists"_s));
    expectWholeTree("the question for a name");
}

} // namespace plum
