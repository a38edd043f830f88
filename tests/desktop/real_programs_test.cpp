#include "desktop/support/script_test.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class RealPrograms : public ScriptTest<EveryManagerTest>
{
protected:
    QString contentOf(const QString &name) const
    {
        QFile file(folder() + u'/' + name);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    // Waits until a window of that class has the keyboard.
    bool hasTheKeyboard(const QByteArray &windowClass)
    {
        return eventually([&] { return view->classWithKeyboard() == windowClass; });
    }
};

INSTANTIATE_TEST_SUITE_P(Under, RealPrograms, everyManager, managerName);

} // namespace

TEST_P(RealPrograms, aTerminalGetsTheTypedText)
{
    QProcess xterm;
    server().start(xterm, u"xterm"_s, {u"-e"_s, u"cat > %1/typed"_s.arg(folder())});
    ASSERT_TRUE(hasTheKeyboard("XTerm"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(folder() + u"/typed"_s); }));
    run({u"keyboard.key \"h\",\"e\",\"l\",\"l\",\"o\",\"enter\""_s, u"keyboard.hotkey \"ctrl\",\"d\""_s});
    EXPECT_TRUE(xterm.waitForFinished(test::patience));
    EXPECT_EQ(contentOf(u"typed"_s), u"hello\n"_s);
}

TEST_P(RealPrograms, aTerminalGetsLatinLettersWhileTheLayoutIsRussian)
{
    outputOf(u"setxkbmap"_s, {u"-layout"_s, u"ru"_s});
    QProcess xterm;
    server().start(xterm, u"xterm"_s, {u"-e"_s, u"cat > %1/typed"_s.arg(folder())});
    ASSERT_TRUE(hasTheKeyboard("XTerm"));
    ASSERT_TRUE(eventually([&] { return QFile::exists(folder() + u"/typed"_s); }));
    run({u"keyboard.key \"h\",\"e\",\"l\",\"l\",\"o\",\"enter\""_s, u"keyboard.hotkey \"ctrl\",\"d\""_s});
    EXPECT_TRUE(xterm.waitForFinished(test::patience));
    EXPECT_EQ(contentOf(u"typed"_s), u"hello\n"_s);
}

TEST_P(RealPrograms, anEditorSavesWhatWasPasted)
{
    QFile note(folder() + u"/note.txt"_s);
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.close();
    QProcess mousepad;
    server().start(mousepad, u"mousepad"_s, {note.fileName()});
    ASSERT_TRUE(hasTheKeyboard("Mousepad"));
    run({u"keyboard.send \"Äpfel, 苹果\""_s, u"keyboard.key \"enter\""_s,
        u"keyboard.hotkey \"ctrl\",\"s\""_s});
    EXPECT_TRUE(eventually([&] { return contentOf(u"note.txt"_s).startsWith(u"Äpfel, 苹果\n"_s); }));
    run({u"window.get \"active_window\",\"h\""_s, u"window.set \"close\",set.h"_s});
    EXPECT_TRUE(mousepad.waitForFinished(test::patience));
}

TEST_P(RealPrograms, copiedTextIsThereForOthersWhenTheScriptHasEnded)
{
    run({u"keyboard.key \"p\",\"l\",\"u\",\"m\""_s, u"keyboard.hotkey \"ctrl\",\"a\""_s,
        u"keyboard.hotkey \"ctrl\",\"c\""_s});
    EXPECT_TRUE(eventually([&] { return clipboardText() == "plum"; }));
}

} // namespace plum
