#include "contract/contract_test.h"

#include "platform/global_hotkey.h"
#include "platform/keyboard.h"

#include <QElapsedTimer>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

constexpr quint8 shift = 16;
constexpr quint8 control = 17;
constexpr quint8 alt = 18;

class HotkeyPort : public ContractTest
{
protected:
    GlobalHotkey &hotkey() { return platform->hotkey(); }
};

// Keys are pressed while another program has the keyboard.
class HotkeyPressed : public HotkeyPort
{
protected:
    void SetUp() override
    {
        HotkeyPort::SetUp();
        if (!platform)
            return;
        QObject::connect(&hotkey(), &GlobalHotkey::fired, [this](quint32 time) {
            ++fired;
            timeOfPress = time;
        });
        window = openWindow();
        ASSERT_TRUE(window);
    }

    void press(std::initializer_list<quint8> modifiers, quint8 key)
    {
        for (const quint8 modifier : modifiers)
            platform->keyboard().keyEvent(modifier, 0);
        tap(key);
        for (const quint8 modifier : modifiers)
            platform->keyboard().keyEvent(modifier, Keyboard::KeyUp);
    }

    bool firesOn(std::initializer_list<quint8> modifiers, quint8 key)
    {
        const int before = fired;
        press(modifiers, key);
        return waitUntil([&] { return fired == before + 1; });
    }

    // Presses the key; true when the other program got it.
    bool reachesTheWindow(std::initializer_list<quint8> modifiers, quint8 key)
    {
        window->forget();
        press(modifiers, key);
        return waitUntil([&] { return !window->seen({u"key down %1"_s.arg(int(key), 0, 16)}).isEmpty(); });
    }

    std::unique_ptr<PeerWindow> window;
    int fired = 0;
    quint32 timeOfPress = 0;
};

} // namespace

TEST_F(HotkeyPort, isTakenOnceAndAgain)
{
    EXPECT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt | GlobalHotkey::Shift, 'X'));
    hotkey().unregisterHotkey();
    hotkey().unregisterHotkey();
}

TEST_F(HotkeyPort, isGivenBackWhenNothingIsRegistered)
{
    hotkey().unregisterHotkey();
    EXPECT_TRUE(hotkey().registerHotkey(0, 'Q'));
    hotkey().unregisterHotkey();
}

TEST_F(HotkeyPressed, firesOncePerPress)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    EXPECT_TRUE(firesOn({alt}, 'Z'));
    EXPECT_TRUE(firesOn({alt}, 'Z'));
    EXPECT_EQ(fired, 2);
    EXPECT_TRUE(window->seen({u"key down 5a"_s}).isEmpty());
}

TEST_F(HotkeyPressed, tellsTheTimeOfThePress)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    QElapsedTimer elapsed;
    elapsed.start();
    const quint32 before = hotkey().now();
    ASSERT_TRUE(firesOn({alt}, 'Z'));
    const quint32 after = hotkey().now();
    // The stamps may come from a clock that ticks every 16 ms.
    constexpr quint32 tick = 20;
    EXPECT_LE(timeOfPress - before + tick, after - before + 2 * tick);
    EXPECT_LE(after - before, elapsed.elapsed() + tick);
}

TEST_F(HotkeyPressed, keysAfterItReachTheWindowWhereNobodySaysElse)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    ASSERT_TRUE(firesOn({alt}, 'Z'));
    EXPECT_TRUE(reachesTheWindow({}, 'M'));
}

TEST_F(HotkeyPressed, givesKeysBackToWhoeverShallHaveThem)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Alt, 'Z'));
    QObject::connect(&hotkey(), &GlobalHotkey::fired, [this] { hotkey().takeKeysFrom(0); });
    ASSERT_TRUE(firesOn({alt}, 'Z'));
    EXPECT_TRUE(reachesTheWindow({}, 'M'));
}

TEST_F(HotkeyPressed, takesEachMixtureOfModifiers)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'A'));
    EXPECT_TRUE(firesOn({control}, 'A'));
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Shift, 'B'));
    EXPECT_TRUE(firesOn({shift}, 'B'));
    ASSERT_TRUE(hotkey().registerHotkey(0, 'Q'));
    EXPECT_TRUE(firesOn({}, 'Q'));
    ASSERT_TRUE(
        hotkey().registerHotkey(GlobalHotkey::Alt | GlobalHotkey::Control | GlobalHotkey::Shift, 'Q'));
    EXPECT_TRUE(firesOn({alt, control, shift}, 'Q'));
}

TEST_F(HotkeyPressed, isNoOtherCombination)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'M'));
    EXPECT_TRUE(reachesTheWindow({}, 'M'));
    EXPECT_TRUE(reachesTheWindow({control}, 'N'));
    EXPECT_TRUE(reachesTheWindow({control, shift}, 'M'));
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(firesOn({control}, 'M'));
}

TEST_F(HotkeyPressed, replacesTheEarlierOne)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'M'));
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'N'));
    EXPECT_TRUE(reachesTheWindow({control}, 'M'));
    EXPECT_TRUE(firesOn({control}, 'N'));
    EXPECT_EQ(fired, 1);
}

TEST_F(HotkeyPressed, isGivenBack)
{
    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'M'));
    hotkey().unregisterHotkey();
    EXPECT_TRUE(reachesTheWindow({control}, 'M'));
    EXPECT_EQ(fired, 0);
}

TEST_F(HotkeyPressed, ofAnotherProgramIsRefused)
{
    auto other = start({u"hold"_s, QString::number(GlobalHotkey::Control), QString::number(int('M'))});
    ASSERT_TRUE(waitUntil([&] { return !other->answer(u"holds"_s).isNull(); }));
    ASSERT_EQ(other->answer(u"holds"_s), u"yes");

    ASSERT_TRUE(hotkey().registerHotkey(GlobalHotkey::Control, 'N'));
    EXPECT_FALSE(hotkey().registerHotkey(GlobalHotkey::Control, 'M'));
    // And nothing is registered then.
    EXPECT_TRUE(reachesTheWindow({control}, 'N'));
    EXPECT_EQ(fired, 0);

    other.reset();
    EXPECT_TRUE(waitUntil([&] { return hotkey().registerHotkey(GlobalHotkey::Control, 'M'); }));
    EXPECT_TRUE(firesOn({control}, 'M'));
}

} // namespace plum::contract
