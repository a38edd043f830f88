#include "stopping/gated_platform.h"

#include "platform/recording/recording_platform.h"
#include "stopping/input_gate.h"
#include "stopping/stoppable_platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

constexpr WindowHandle editor = 7;
constexpr WindowHandle popup = 8;

class GatedPlatformTest : public testing::Test
{
protected:
    GatedPlatformTest()
    {
        inner.windows().rectangles = {{editor, {0, 0, 10, 10}}, {popup, {0, 0, 5, 5}}};
        inner.windows().foregroundWindow = editor;
        inner.timers().onPump = [this] {
            now += 50;
            pauses += gate.pause();
            if (onPump)
                onPump();
        };
    }

    void yields() { gate.begin({.yields = true}); }
    void isScoped()
    {
        gate.begin({.isScoped = [] { return true; }});
    }

    // What was sent, without the timers of the pauses.
    QStringList sent() const
    {
        QStringList lines = inner.log.lines();
        lines.removeIf([](const QString &line) { return line.startsWith("timer"_L1); });
        return lines;
    }

    qint64 now = 1'000'000; // milliseconds
    std::function<void()> onPump;
    QList<InputPause> pauses;
    recording::RecordingPlatform inner;
    StopSignal stop;
    StoppablePlatform stoppable{inner, stop};
    InputGate gate{[this] { return now; }};
    GatedPlatform platform{stoppable, gate};
};

} // namespace

TEST_F(GatedPlatformTest, PassesEverythingOnWhereNobodyHasAskedForMore)
{
    gate.noteHand();
    platform.keyboard().keyEvent(65, 0);
    platform.pointer().buttonEvent(Pointer::LeftDown);
    platform.pointer().moveTo({1, 2});
    EXPECT_TRUE(platform.keyboard().typeText(u"ab"));
    platform.windows().activate(editor);
    EXPECT_EQ(inner.log.lines(),
        (QStringList{u"key 65 0"_s, u"mouse 2"_s, u"move 1 2"_s, u"type ab"_s, u"window activate 7"_s}));
}

TEST_F(GatedPlatformTest, WaitsUntilTheHandHasRested)
{
    yields();
    platform.keyboard().keyEvent(65, 0);
    platform.keyboard().keyEvent(65, Keyboard::KeyUp);
    EXPECT_TRUE(pauses.isEmpty());
    const std::vector<std::pair<std::function<void()>, QString>> inputs{
        {[this] { platform.keyboard().keyEvent(66, 0); }, u"key 66 0"_s},
        {[this] {
             platform.pointer().moveTo({3, 4});
         },
            u"move 3 4"_s},
        {[this] { platform.pointer().buttonEvent(Pointer::RightDown); }, u"mouse 8"_s},
        {[this] { platform.keyboard().typeText(u"x"); }, u"type x"_s}};
    for (const auto &[send, event] : inputs) {
        inner.log.clear();
        pauses.clear();
        gate.noteHand();
        const qint64 begun = now;
        send();
        EXPECT_EQ(now - begun, InputGate::restTime) << event.toStdString();
        EXPECT_EQ(sent().last(), event);
        ASSERT_FALSE(pauses.isEmpty());
        EXPECT_EQ(pauses.first().reason, InputPause::Reason::Hand);
        EXPECT_EQ(pauses.first().milliseconds, InputGate::restTime);
        EXPECT_EQ(pauses.last().milliseconds, 50) << "it counts down";
        EXPECT_EQ(gate.pause().reason, InputPause::Reason::None);
        gate.begin({.yields = true});
    }
}

TEST_F(GatedPlatformTest, BeginsToCountAnewWhenTheHandGoesOn)
{
    yields();
    gate.noteHand();
    const qint64 begun = now;
    onPump = [this, begun] {
        if (now - begun <= 1000)
            gate.noteHand();
    };
    platform.keyboard().keyEvent(65, 0);
    EXPECT_EQ(now - begun, 1000 + InputGate::restTime);
}

TEST_F(GatedPlatformTest, GoesOnAtOnceWhenTheUserSaysSo)
{
    yields();
    gate.noteHand();
    const qint64 begun = now;
    onPump = [this] {
        gate.goOn();
        gate.noteHand(); // the key that said so
    };
    platform.keyboard().keyEvent(65, 0);
    platform.keyboard().keyEvent(65, Keyboard::KeyUp);
    platform.keyboard().keyEvent(66, 0);
    EXPECT_EQ(now - begun, 50);
    now += 1000;
    gate.noteHand();
    onPump = {};
    pauses.clear();
    platform.keyboard().keyEvent(67, 0);
    EXPECT_FALSE(pauses.isEmpty()) << "the wish was for one pause";
}

TEST_F(GatedPlatformTest, LetsHeldKeysGoForThePauseAndNeverKeepsAReleaseBack)
{
    yields();
    platform.keyboard().keyEvent(17, 0);
    platform.keyboard().keyEvent(16, 0);
    platform.pointer().buttonEvent(Pointer::LeftDown);
    gate.noteHand();
    platform.pointer().buttonEvent(Pointer::LeftUp);
    EXPECT_TRUE(pauses.isEmpty());
    inner.log.clear();
    platform.keyboard().keyEvent(65, 0);
    EXPECT_EQ(
        sent(), (QStringList{u"key 16 2"_s, u"key 17 2"_s, u"key 17 0"_s, u"key 16 0"_s, u"key 65 0"_s}));
    gate.noteHand();
    inner.log.clear();
    platform.keyboard().keyEvent(16, Keyboard::KeyUp);
    EXPECT_EQ(sent(), QStringList(u"key 16 2"_s));
}

TEST_F(GatedPlatformTest, PutsThePointerBackBeforeAClickThatWaited)
{
    yields();
    platform.pointer().moveTo({30, 40});
    gate.noteHand();
    inner.pointer().at = {500, 500};
    inner.log.clear();
    platform.pointer().buttonEvent(Pointer::LeftDown);
    EXPECT_EQ(sent(), (QStringList{u"move 30 40"_s, u"mouse 2"_s}));
    platform.pointer().buttonEvent(Pointer::LeftUp);
    inner.pointer().at = {600, 600};
    inner.log.clear();
    now += 60'000;
    platform.pointer().buttonEvent(Pointer::LeftDown);
    EXPECT_EQ(sent(), QStringList(u"mouse 2"_s)) << "nobody was waited for";
}

TEST_F(GatedPlatformTest, LeavesATextWhereTheHandCameInAndTypesItsRest)
{
    yields();
    int typed = 0;
    const auto before = [&] {
        if (++typed == 4)
            gate.noteHand();
    };
    EXPECT_TRUE(platform.keyboard().typeText(u"a\r\n😀bcd", before));
    QStringList texts = sent();
    texts.removeAll(u"type "_s);
    EXPECT_EQ(texts, (QStringList{u"type a\r\n😀b"_s, u"type cd"_s}));
    EXPECT_EQ(typed, 6);
}

TEST_F(GatedPlatformTest, StopsWhileItWaits)
{
    yields();
    gate.noteHand();
    onPump = [this] { stop.raise(); };
    EXPECT_THROW(platform.keyboard().keyEvent(65, 0), RunStopped);
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(gate.pause().reason, InputPause::Reason::None);
    stop.lower();
    inner.timers().hasRoom = false;
    EXPECT_THROW(platform.keyboard().keyEvent(65, 0), RunStopped) << "it cannot wait";
}

TEST_F(GatedPlatformTest, SendsKeysAndClicksToOneWindowAlone)
{
    isScoped();
    platform.windows().activate(editor);
    platform.keyboard().keyEvent(65, 0);
    EXPECT_TRUE(pauses.isEmpty());
    inner.windows().foregroundWindow = popup;
    platform.pointer().moveTo({1, 1});
    EXPECT_TRUE(pauses.isEmpty()) << "moving the pointer hurts nobody";
    for (const auto &send : {std::function([this] {
                                 platform.keyboard().keyEvent(66, 0);
                                 platform.keyboard().keyEvent(66, Keyboard::KeyUp);
                             }),
             std::function([this] { platform.pointer().buttonEvent(Pointer::LeftDown); }),
             std::function([this] { platform.keyboard().typeText(u"secret"); })}) {
        inner.windows().foregroundWindow = popup;
        pauses.clear();
        inner.log.clear();
        onPump = [this] {
            EXPECT_EQ(sent().filter(u"key 66"_s) + sent().filter(u"mouse"_s) + sent().filter(u"type"_s),
                QStringList());
            if (pauses.size() == 3)
                inner.windows().foregroundWindow = editor;
        };
        send();
        EXPECT_EQ(pauses.size(), 3);
        EXPECT_EQ(pauses.first().reason, InputPause::Reason::OtherWindow);
        EXPECT_FALSE(sent().isEmpty());
    }
}

TEST_F(GatedPlatformTest, TakesTheWindowThatARunBringsToTheFront)
{
    isScoped();
    platform.keyboard().keyEvent(65, 0); // to whatever is in front
    platform.windows().activate(popup);
    platform.keyboard().keyEvent(66, 0);
    inner.windows().windowUnderPointer = editor;
    platform.pointer().buttonEvent(Pointer::LeftDown);
    platform.keyboard().keyEvent(67, 0); // it has not come to the front yet
    inner.windows().foregroundWindow = editor;
    platform.keyboard().keyEvent(68, 0);
    EXPECT_TRUE(pauses.isEmpty());
    inner.windows().foregroundWindow = popup;
    onPump = [this] { inner.windows().foregroundWindow = editor; };
    platform.keyboard().keyEvent(69, 0);
    EXPECT_EQ(pauses.size(), 1) << "what was clicked last is what counts";
}

TEST_F(GatedPlatformTest, ForgetsAWindowThatTheRunPutsAway)
{
    isScoped();
    for (const auto &putAway : {&Windows::close, &Windows::hide, &Windows::minimise}) {
        platform.windows().activate(editor);
        (platform.windows().*putAway)(editor);
        inner.windows().foregroundWindow = popup;
        platform.keyboard().keyEvent(65, 0);
        EXPECT_TRUE(pauses.isEmpty());
        platform.windows().show(editor);
    }
}

TEST_F(GatedPlatformTest, TellsOnceOfEachPause)
{
    yields();
    int told = 0;
    gate.onPause([&](InputPause pause) {
        ++told;
        EXPECT_EQ(pause.reason, InputPause::Reason::Hand);
    });
    gate.noteHand();
    platform.keyboard().keyEvent(65, 0);
    platform.keyboard().keyEvent(66, 0);
    EXPECT_EQ(told, 1);
}
