#include "desktop/support/launcher_desktop.h"

#include <csignal>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The hotkey, pressed by hand with a text typed in the same breath: the server itself has no moment between
// the two.
class HotkeyPressTest : public LauncherDesktop, public testing::WithParamInterface<const char *>
{
protected:
    void SetUp() override { prepare(QString::fromLatin1(GetParam())); }

    // Leaves the launcher hidden and the probe with the keyboard.
    void startHidden()
    {
        startLauncher();
        hands->key(u"alt+z"_s);
        expectHidden();
        probe->forget();
    }

    void expectHidden()
    {
        ASSERT_TRUE(disappears(u"frmSet/frmSet"_s));
        ASSERT_TRUE(eventually([&] { return view->isActive(probe->window()); }));
    }

    void expectTyped(const QString &text)
    {
        ASSERT_TRUE(shows(u"frmSet/Text8"_s, text)) << state();
        ASSERT_TRUE(getsFocus(u"frmSet/Text8"_s)) << state();
    }

    std::string state()
    {
        const Control box = see(u"frmSet/Text8"_s);
        return QStringLiteral("\"%1\", shown %2, focus %3, viewable %4")
            .arg(box.text)
            .arg(box.shown)
            .arg(box.focus)
            .arg(view->isViewable(see(u"frmSet/frmSet"_s).id))
            .toStdString();
    }

    void emptyBox()
    {
        clearEntry();
        ASSERT_TRUE(shows(u"frmSet/Text8"_s, {}));
    }

    // The probe's own entry has the text, which grew a character at a time from nothing.
    bool probeHas(const QString &text)
    {
        return eventually(
            [&] { return probe->seen({u"text"_s}).value(text.size() - 1) == u"text "_s + text; });
    }

    void signalLauncher(int signal) { ::kill(static_cast<pid_t>(launcher().processId()), signal); }

    // Waits for the process that watches over the keyboard.
    void expectGuard()
    {
        ASSERT_TRUE(eventually([&] { return server().processes("plum-keyguard") > 0; }));
    }

    QByteArray desktopOf(const QString &window)
    {
        return outputOf(u"xdotool"_s, {u"get_desktop_for_window"_s, QString::number(see(window).id)})
            .trimmed();
    }
};

} // namespace

TEST_P(HotkeyPressTest, whatIsTypedAtOnceArrivesThoughTheLauncherWasHidden)
{
    startHidden();
    const int turns = QByteArray(GetParam()) == "openbox" ? 500 : 100;
    for (int turn = 0; turn < turns && !HasFatalFailure(); ++turn) {
        const QString text = u"app%1"_s.arg(turn);
        hands->keyAndType(u"alt+z"_s, text);
        expectTyped(text);
        emptyBox();
        hands->key(u"alt+z"_s);
        expectHidden();
    }
    EXPECT_EQ(probe->seen({u"text"_s}), QStringList());
}

TEST_P(HotkeyPressTest, whatIsTypedAtOnceAfterTheLauncherWasLeftArrivesBehindIt)
{
    startHidden();
    QString typed;
    for (int turn = 0; turn < 10 && !HasFatalFailure(); ++turn) {
        hands->key(u"alt+z"_s);
        expectTyped({});
        hands->keyAndType(u"alt+z"_s, u"ab"_s);
        typed += u"ab"_s;
        expectHidden();
        ASSERT_TRUE(probeHas(typed)) << turn;
    }
    EXPECT_EQ(textOf(u"frmSet/Text8"_s), QString());
}

TEST_P(HotkeyPressTest, twoPressesAndATextFetchACoveredLauncher)
{
    startHidden();
    auto cover = startProbe(u"Cover"_s, {0, 0, 1200, 850});
    ASSERT_TRUE(isReadyForUse(*cover));
    for (int turn = 0; turn < 5 && !HasFatalFailure(); ++turn) {
        hands->keyAndType(u"alt+z"_s, u"top"_s);
        expectTyped(u"top"_s);
        emptyBox();
        view->activate(cover->window());
        ASSERT_TRUE(eventually([&] {
            return view->isActive(cover->window())
                && view->isAbove(cover->window(), see(u"frmSet/frmSet"_s).id);
        }));
        // A covered window is a visible one: the first press hides it.
        hands->key(u"alt+z"_s);
        ASSERT_TRUE(disappears(u"frmSet/frmSet"_s));
    }
    EXPECT_EQ(cover->seen({u"text"_s}), QStringList());
}

TEST_P(HotkeyPressTest, aLauncherOnAnotherDesktopComesToThisOne)
{
    startLauncher();
    for (int turn = 1; turn <= 6 && !HasFatalFailure(); ++turn) {
        const QString desktop = QString::number(turn % 2);
        outputOf(u"xdotool"_s, {u"set_desktop"_s, desktop});
        ASSERT_TRUE(eventually(
            [&] { return outputOf(u"xdotool"_s, {u"get_desktop"_s}).trimmed() == desktop.toLatin1(); }));
        ASSERT_TRUE(eventually([&] { return !view->isViewable(see(u"frmSet/frmSet"_s).id); }));
        hands->keyAndType(u"alt+z"_s, u"here"_s);
        expectTyped(u"here"_s);
        EXPECT_EQ(desktopOf(u"frmSet/frmSet"_s), desktop.toLatin1());
        emptyBox();
    }
    EXPECT_EQ(probe->seen({u"text"_s}), QStringList());
}

TEST_P(HotkeyPressTest, aKeyTypedBeforeTheHotkeyIsLetGoArrives)
{
    startHidden();
    for (const QString &key : {u"alt"_s, u"z"_s})
        hands->keyDown(key);
    hands->keyUp(u"alt"_s);
    hands->keyDown(u"b"_s);
    hands->keyUp(u"z"_s);
    hands->keyUp(u"b"_s);
    hands->type(u"oth"_s);
    expectTyped(u"both"_s);
    EXPECT_EQ(probe->seen({u"text"_s}), QStringList());
    EXPECT_TRUE(view->keysDown().empty());
}

TEST_P(HotkeyPressTest, aStoppedLauncherDoesNotKeepTheKeyboard)
{
    startHidden();
    expectGuard();
    signalLauncher(SIGSTOP);
    hands->keyAndType(u"alt+z"_s, u"free"_s);
    EXPECT_TRUE(probeHas(u"free"_s));
    signalLauncher(SIGCONT);
    // It answers the press that it could not see before, and the next ones as ever.
    expectTyped({});
    ASSERT_TRUE(eventually([&] { return view->isKeyTaken('z', XCB_MOD_MASK_1); }));
    hands->key(u"alt+z"_s);
    expectHidden();
    hands->keyAndType(u"alt+z"_s, u"again"_s);
    expectTyped(u"again"_s);
}

TEST_P(HotkeyPressTest, aLauncherThatStopsWhileItKeepsKeysBackDoesNotKeepThem)
{
    startHidden();
    expectGuard();
    hands->keyAndType(u"alt+z"_s, u"x"_s);
    signalLauncher(SIGSTOP);
    EXPECT_TRUE(eventually([&] { return view->isKeyboardFree(); }));
    signalLauncher(SIGCONT);
}

TEST_P(HotkeyPressTest, aPressAndATextWhilePlumStartsAreForIt)
{
    // The program is stopped between the registration of its hotkey and its first window, at a moment of its
    // start that an attempt may miss.
    for (int attempt = 0; attempt < 20; ++attempt) {
        startProgram();
        const auto process = static_cast<pid_t>(launcher().processId());
        ASSERT_TRUE(eventually([&] { return view->isKeyTaken('z', XCB_MOD_MASK_1); }));
        ::kill(process, SIGSTOP);
        const bool isInTime = !view->hasWindowNamed("Plum");
        if (isInTime)
            hands->keyAndType(u"alt+z"_s, u"early"_s);
        ::kill(process, SIGCONT);
        if (isInTime) {
            expectTyped(u"early"_s);
            EXPECT_EQ(probe->seen({u"text"_s}), QStringList());
            return;
        }
        launcher().terminate();
        ASSERT_TRUE(launcher().waitForFinished(test::patience));
    }
    FAIL() << "the hotkey is registered after the window is shown";
}

INSTANTIATE_TEST_SUITE_P(EveryManager, HotkeyPressTest, everyManager, managerName);

} // namespace plum
