#include "platform/desktop_windows.h"
#include "platform/global_hotkey.h"
#include "platform/keyboard.h"
#include "platform/x11/connection/x11_connection.h"
#include "support/wait_until.h"
#include "x11_test.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <array>
#include <csignal>
#include <map>
#include <utility>
#include <vector>

#include <xcb/xtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Keys by their place on a US keyboard.
constexpr xcb_keycode_t q = 24;
constexpr xcb_keycode_t a = 38;
constexpr xcb_keycode_t z = 52;
constexpr xcb_keycode_t b = 56;
constexpr xcb_keycode_t altLeft = 64;
constexpr xcb_keycode_t controlLeft = 37;
constexpr xcb_keycode_t shiftLeft = 50;
constexpr xcb_keycode_t capsLock = 66;
constexpr xcb_keycode_t numLock = 77;

class HotkeyTest : public X11Test
{
protected:
    void SetUp() override
    {
        X11Test::SetUp();
        QObject::connect(&hotkey(), &GlobalHotkey::fired, [this] { ++fired; });
    }

    GlobalHotkey &hotkey() { return platform->hotkey(); }

    // As another program would.
    void send(uint8_t type, xcb_keycode_t key)
    {
        xcb_test_fake_input(other.xcb(), type, key, XCB_CURRENT_TIME, other.root(), 0, 0, 0);
        other.sync();
    }

    void press(std::initializer_list<xcb_keycode_t> keys)
    {
        for (const xcb_keycode_t key : keys)
            send(XCB_KEY_PRESS, key);
        for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
            send(XCB_KEY_RELEASE, *key);
    }

    bool firesOn(std::initializer_list<xcb_keycode_t> keys)
    {
        const int before = fired;
        press(keys);
        return waitUntil([&] { return fired == before + 1; });
    }

    // Whether a press of `keys` is nobody's: another program can take the combination.
    bool isFree(uint16_t modifiers, xcb_keycode_t key)
    {
        const XcbPointer<xcb_generic_error_t> error(xcb_request_check(other.xcb(),
            xcb_grab_key_checked(
                other.xcb(), 0, other.root(), modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        if (!error)
            xcb_ungrab_key(other.xcb(), key, other.root(), modifiers);
        other.sync();
        return !error;
    }

    uint16_t modifierState()
    {
        return other.reply(xcb_query_pointer_reply, xcb_query_pointer, other.root())->mask;
    }

    // The server keeps back what is pressed until the hotkey has been answered, the locks too.
    bool modifiersBecome(int wanted)
    {
        return waitUntil([&] { return modifierState() == wanted; });
    }

    // A window of another program; the keys pressed in it are kept.
    xcb_window_t makeWindow(X11Connection &program)
    {
        const xcb_window_t window = xcb_generate_id(program.xcb());
        const std::array<uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS};
        xcb_create_window(program.xcb(), XCB_COPY_FROM_PARENT, window, program.root(), 0, 0, 50, 50, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
            values.data());
        xcb_map_window(program.xcb(), window);
        program.sync();
        program.addReceiver([this, window](const xcb_generic_event_t &event) {
            const auto &key = reinterpret_cast<const xcb_key_press_event_t &>(event);
            if (event.response_type == XCB_KEY_PRESS && key.event == window)
                received[window].push_back(key.detail);
        });
        return window;
    }

    void giveKeyboard(xcb_window_t window)
    {
        xcb_set_input_focus(other.xcb(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        other.sync();
    }

    bool arrives(xcb_window_t window, const std::vector<xcb_keycode_t> &keys)
    {
        return waitUntil([&] {
            other.dispatchArrived();
            third.dispatchArrived();
            return received[window] == keys;
        });
    }

    bool runsGuard() { return server.processes("plum-keyguard") > 0; }

    void useLayout(const QStringList &options) { run(u"setxkbmap"_s, options); }

    X11Connection other;
    X11Connection third;
    int fired = 0;
    std::map<xcb_window_t, std::vector<xcb_keycode_t>> received;
};

} // namespace

TEST_F(HotkeyTest, firesOncePerPress)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_TRUE(firesOn({altLeft, z}));
    EXPECT_TRUE(firesOn({altLeft, z}));
    EXPECT_EQ(fired, 2);
}

TEST_F(HotkeyTest, firesOnTheKeysOfAnotherProgram)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    run(u"xdotool"_s, {u"key"_s, u"alt+z"_s});
    EXPECT_TRUE(waitUntil([&] { return fired == 1; }));
}

TEST_F(HotkeyTest, firesOnTheKeysOfAScript)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'B'));
    Keyboard &keyboard = platform->keyboard();
    for (const auto &[key, flags] : std::initializer_list<std::pair<quint8, quint32>>{
             {17, 0}, {'B', 0}, {'B', Keyboard::KeyUp}, {17, Keyboard::KeyUp}})
        keyboard.keyEvent(key, flags);
    EXPECT_TRUE(waitUntil([&] { return fired == 1; }));
}

TEST_F(HotkeyTest, takesEachModifier)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'A'));
    EXPECT_TRUE(firesOn({controlLeft, a}));
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Shift, 'B'));
    EXPECT_TRUE(firesOn({shiftLeft, b}));
    ASSERT_TRUE(hotkey().registerHotkey(0, 'Q'));
    EXPECT_TRUE(firesOn({q}));
    ASSERT_TRUE(
        hotkey().registerHotkey(GlobalHotkey::Alt | GlobalHotkey::Control | GlobalHotkey::Shift, 'Q'));
    EXPECT_TRUE(firesOn({altLeft, controlLeft, shiftLeft, q}));
}

TEST_F(HotkeyTest, otherCombinationsDoNotFire)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    press({z});
    press({altLeft, a});
    press({altLeft, shiftLeft, z});
    EXPECT_TRUE(firesOn({altLeft, z}));
    EXPECT_EQ(fired, 1);
}

TEST_F(HotkeyTest, firesWhateverLocksAreOn)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    press({capsLock});
    ASSERT_TRUE(modifiersBecome(XCB_MOD_MASK_LOCK));
    EXPECT_TRUE(firesOn({altLeft, z}));
    press({numLock});
    ASSERT_TRUE(modifiersBecome(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
    EXPECT_TRUE(firesOn({altLeft, z}));
    press({capsLock});
    ASSERT_TRUE(modifiersBecome(XCB_MOD_MASK_2));
    EXPECT_TRUE(firesOn({altLeft, z}));
    EXPECT_EQ(fired, 3);
}

TEST_F(HotkeyTest, firesWithScrollLockWhereItIsAModifier)
{
    run(u"xmodmap"_s, {u"-e"_s, u"add mod3 = Scroll_Lock"_s});
    constexpr xcb_keycode_t scrollLock = 78;
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_FALSE(isFree(XCB_MOD_MASK_1 | XCB_MOD_MASK_3, z));
    EXPECT_TRUE(firesOn({scrollLock, altLeft, z}));
}

TEST_F(HotkeyTest, aKeyThatIsHeldFiresOnce)
{
    run(u"xset"_s, {u"r"_s, u"rate"_s, u"50"_s, u"100"_s});
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    send(XCB_KEY_PRESS, altLeft);
    send(XCB_KEY_PRESS, z);
    ASSERT_TRUE(waitUntil([&] { return fired == 1; }));
    // Long enough for some twenty repetitions.
    QEventLoop loop;
    QTimer::singleShot(250, &loop, &QEventLoop::quit);
    loop.exec();
    send(XCB_KEY_RELEASE, z);
    EXPECT_EQ(fired, 1);
    send(XCB_KEY_PRESS, z);
    EXPECT_TRUE(waitUntil([&] { return fired == 2; }));
    send(XCB_KEY_RELEASE, z);
    send(XCB_KEY_RELEASE, altLeft);
    EXPECT_EQ(fired, 2);
}

TEST_F(HotkeyTest, whatFollowsWaitsForTheWindowThatItIsFor)
{
    const xcb_window_t behind = makeWindow(third);
    const xcb_window_t wanted = makeWindow(other);
    giveKeyboard(behind);
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    QObject::connect(
        &hotkey(), &GlobalHotkey::fired, [&] { hotkey().giveKeysTo(static_cast<WindowHandle>(wanted)); });
    press({altLeft, z});
    press({q});
    press({a});
    ASSERT_TRUE(waitUntil([&] { return fired == 1; }));
    third.sync();
    third.dispatchArrived();
    EXPECT_EQ(received[behind], (std::vector<xcb_keycode_t>{altLeft}));
    giveKeyboard(wanted);
    EXPECT_TRUE(arrives(wanted, {q, a}));
    EXPECT_EQ(received[behind], (std::vector<xcb_keycode_t>{altLeft}));
}

TEST_F(HotkeyTest, whatFollowsWaitsUntilTheKeyboardHasLeftAWindow)
{
    const xcb_window_t left = makeWindow(other);
    const xcb_window_t next = makeWindow(other);
    giveKeyboard(left);
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    QObject::connect(&hotkey(), &GlobalHotkey::fired, [&] {
        hotkey().takeKeysFrom(static_cast<WindowHandle>(left));
        giveKeyboard(next);
    });
    press({altLeft, z});
    press({q});
    EXPECT_TRUE(arrives(next, {q}));
    EXPECT_EQ(received[left], (std::vector<xcb_keycode_t>{altLeft}));
}

TEST_F(HotkeyTest, whatFollowsGoesOnWhenNobodySaysWhereTo)
{
    const xcb_window_t window = makeWindow(other);
    giveKeyboard(window);
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    press({altLeft, z});
    press({q});
    EXPECT_TRUE(arrives(window, {altLeft, q}));
}

TEST_F(HotkeyTest, aProgramThatHangsDoesNotKeepTheKeyboard)
{
    const xcb_window_t window = makeWindow(other);
    giveKeyboard(window);
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    press({altLeft, z});
    press({q});
    // No event loop runs here, as in a program that is busy.
    EXPECT_TRUE(other.waitUntil(
        [&] {
            return received[window] == std::vector<xcb_keycode_t>{altLeft, q};
        },
        test::patience));
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(waitUntil([&] { return fired == 1; }));
}

TEST_F(HotkeyTest, aProgramThatIsStoppedDoesNotKeepTheKeyboard)
{
    const xcb_window_t window = makeWindow(other);
    giveKeyboard(window);
    QProcess program;
    server.start(program, builtProgram(u"x11_probe"_s), {u"hotkey"_s});
    QByteArray said;
    const auto says = [&](const QByteArray &words) {
        return waitUntil([&] {
            said += program.readAllStandardOutput();
            return said == words;
        });
    };
    ASSERT_TRUE(says("registered\n"));
    ASSERT_TRUE(waitUntil([&] { return runsGuard(); }));

    ::kill(static_cast<pid_t>(program.processId()), SIGSTOP);
    press({altLeft, z});
    press({q});
    EXPECT_TRUE(waitUntil([&] {
        other.dispatchArrived();
        return !received[window].empty() && received[window].back() == q;
    }));

    // It takes the key again when it goes on, and another guard watches over it.
    ASSERT_TRUE(waitUntil([&] { return !runsGuard(); }));
    ::kill(static_cast<pid_t>(program.processId()), SIGCONT);
    ASSERT_TRUE(says("registered\nfired\n")); // the press that it could not see before
    ASSERT_TRUE(waitUntil([&] { return runsGuard(); }));
    press({altLeft, z});
    EXPECT_TRUE(says("registered\nfired\nfired\n"));
    program.kill();
    program.waitForFinished();
    EXPECT_TRUE(waitUntil([&] { return !runsGuard(); }));
}

TEST_F(HotkeyTest, unregisteringSetsTheKeyboardFree)
{
    const xcb_window_t window = makeWindow(other);
    giveKeyboard(window);
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    press({altLeft, z});
    press({q});
    hotkey().unregisterHotkey();
    EXPECT_TRUE(other.waitUntil(
        [&] { return !received[window].empty() && received[window].back() == q; }, test::patience));
}

TEST_F(HotkeyTest, theTimeOfAPressIsComparable)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    quint32 pressed = 0;
    QObject::connect(&hotkey(), &GlobalHotkey::fired, [&](quint32 time) { pressed = time; });
    const quint32 before = hotkey().now();
    press({altLeft, z});
    ASSERT_TRUE(waitUntil([&] { return fired == 1; }));
    const quint32 after = hotkey().now();
    EXPECT_LE(before, pressed);
    EXPECT_LE(pressed, after);
}

TEST_F(HotkeyTest, aCombinationOfAnotherProgramIsRefused)
{
    xcb_grab_key(other.xcb(), 0, other.root(), XCB_MOD_MASK_1 | XCB_MOD_MASK_2, z, XCB_GRAB_MODE_ASYNC,
        XCB_GRAB_MODE_ASYNC);
    other.sync();
    EXPECT_FALSE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    // What could be had of it was given back.
    EXPECT_TRUE(isFree(XCB_MOD_MASK_1, z));
    EXPECT_TRUE(isFree(XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK, z));
    EXPECT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'B'));
    EXPECT_TRUE(firesOn({altLeft, b}));
}

TEST_F(HotkeyTest, aRefusedCombinationLeavesNoEarlierOne)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_FALSE(hotkey().registerHotkey(GlobalHotkey::Alt, '1'));
    EXPECT_TRUE(isFree(XCB_MOD_MASK_1, z));
}

TEST_F(HotkeyTest, aSecondRegistrationReplacesTheFirst)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_TRUE(firesOn({altLeft, z}));
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'B'));
    EXPECT_TRUE(isFree(XCB_MOD_MASK_1, z));
    EXPECT_TRUE(firesOn({altLeft, b}));
    EXPECT_EQ(fired, 2);
}

TEST_F(HotkeyTest, unregisteringGivesTheKeyBack)
{
    hotkey().unregisterHotkey();
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_FALSE(isFree(XCB_MOD_MASK_1, z));
    hotkey().unregisterHotkey();
    EXPECT_TRUE(isFree(XCB_MOD_MASK_1, z));
    hotkey().unregisterHotkey();
}

TEST_F(HotkeyTest, aLetterIsWhereTheFrenchLayoutHasIt)
{
    useLayout({u"fr"_s});
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'A'));
    EXPECT_TRUE(firesOn({altLeft, q})); // the key left of Z on a French keyboard
    EXPECT_TRUE(isFree(XCB_MOD_MASK_1, a));
    run(u"xdotool"_s, {u"key"_s, u"alt+a"_s});
    EXPECT_TRUE(waitUntil([&] { return fired == 2; }));
}

TEST_F(HotkeyTest, aLetterThatTheLayoutLacksIsInItsUsualPlace)
{
    useLayout({u"ru"_s});
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_TRUE(firesOn({altLeft, z}));
}

TEST_F(HotkeyTest, aLetterThatTheActiveGroupLacksIsTakenFromAnotherOne)
{
    useLayout({u"-layout"_s, u"ru,fr"_s});
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'A'));
    EXPECT_TRUE(firesOn({altLeft, q}));
}

TEST_F(HotkeyTest, firesInTheSecondGroupOfTheLayout)
{
    useLayout({u"-layout"_s, u"us,ru"_s, u"-option"_s, u"grp:menu_toggle"_s});
    constexpr xcb_keycode_t menu = 135;
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_TRUE(firesOn({altLeft, z}));
    press({menu});
    ASSERT_TRUE(waitUntil([&] { return (modifierState() & 0x6000) != 0; })); // the group is part of the state
    EXPECT_TRUE(firesOn({altLeft, z}));
}

TEST_F(HotkeyTest, theKeyFollowsTheLayout)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'A'));
    EXPECT_TRUE(firesOn({altLeft, a}));
    useLayout({u"fr"_s});
    ASSERT_TRUE(waitUntil([&] { return !isFree(XCB_MOD_MASK_1, q); }));
    EXPECT_TRUE(isFree(XCB_MOD_MASK_1, a));
    EXPECT_TRUE(firesOn({altLeft, q}));
    EXPECT_EQ(fired, 2);
}

TEST_F(HotkeyTest, aKeyThatAScriptNeedsForItselfDoesNotMoveTheHotkey)
{
    useLayout({u"ru"_s});
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    platform->keyboard().keyEvent('Z', 0); // gets a key of its own
    platform->keyboard().keyEvent('Z', Keyboard::KeyUp);
    EXPECT_TRUE(firesOn({altLeft, z}));
}

TEST_F(HotkeyTest, aPressThatComesWithAnotherAnswerIsNotLost)
{
    run(u"xset"_s, {u"r"_s, u"off"_s}); // neither a repetition nor a release wakes the loop
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    send(XCB_KEY_PRESS, altLeft);
    send(XCB_KEY_PRESS, z);
    platform->windows().foreground();
    QEventLoop loop;
    QObject::connect(&hotkey(), &GlobalHotkey::fired, &loop, &QEventLoop::quit);
    QTimer::singleShot(std::chrono::seconds(60), &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_EQ(fired, 1);
}

TEST(OffscreenHotkey, isRefused)
{
    qunsetenv("DISPLAY");
    const auto platform = createPlatform(u"x11_tests"_s);
    EXPECT_FALSE(platform->hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    platform->hotkey().unregisterHotkey();
}

} // namespace plum
