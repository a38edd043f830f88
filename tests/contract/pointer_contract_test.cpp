#include "contract/contract_test.h"

#include "platform/keyboard.h"
#include "platform/pointer.h"
#include "platform/screen.h"

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

class PointerPort : public ContractTest
{
protected:
    Pointer &pointer() { return platform->pointer(); }
};

// Only where a program receives what the port sends.
class PointerEvents : public PointerPort
{
protected:
    void SetUp() override
    {
        PointerPort::SetUp();
        if (!platform)
            return;
        window = openWindow();
        ASSERT_TRUE(window);
        place = window->inside().topLeft() + QPoint(100, 200);
        pointer().moveTo(place);
    }

    std::unique_ptr<PeerWindow> window;
    QPoint place;
};

} // namespace

TEST_F(PointerPort, isWhereItWasMoved)
{
    const QSize size = platform->screen().mainScreenSize();
    for (const QPoint point : {QPoint(0, 0), QPoint(size.width() - 1, size.height() - 1), QPoint(640, 1)}) {
        pointer().moveTo(point);
        EXPECT_EQ(pointer().position(), point);
    }
}

TEST_F(PointerPort, isClippedToTheDesktop)
{
    const QRect all = platform->screen().desktop();
    pointer().moveTo({-40'000, 100'000});
    EXPECT_EQ(pointer().position(), all.bottomLeft());
    pointer().moveTo({100'000, -40'000});
    EXPECT_EQ(pointer().position(), all.topRight());
}

TEST_F(PointerEvents, happenWhereThePointerIs)
{
    pointer().buttonEvent(Pointer::LeftDown);
    pointer().buttonEvent(Pointer::LeftUp);
    const QString at = u" %1 %2"_s.arg(place.x()).arg(place.y());
    EXPECT_EQ(
        events(*window, {u"button"_s}, 2, 5), (QStringList{u"button down 1"_s + at, u"button up 1"_s + at}));
}

TEST_F(PointerEvents, ofOneCallHappenInTheOrderOfTheFlags)
{
    pointer().buttonEvent(Pointer::RightUp | Pointer::RightDown | Pointer::LeftUp | Pointer::LeftDown);
    EXPECT_EQ(events(*window, {u"button"_s}, 4, 3),
        (QStringList{u"button down 1"_s, u"button up 1"_s, u"button down 3"_s, u"button up 3"_s}));
}

TEST_F(PointerEvents, knowNoOtherBits)
{
    pointer().buttonEvent(1 | 32 | 64 | 0x800 | 0x8000);
    EXPECT_EQ(pointer().position(), place);
    pointer().buttonEvent(Pointer::RightDown | 1 | 32);
    pointer().buttonEvent(Pointer::RightUp);
    EXPECT_EQ(events(*window, {u"button"_s, u"double"_s}, 2, 3),
        (QStringList{u"button down 3"_s, u"button up 3"_s}));
    EXPECT_EQ(pointer().position(), place);
}

TEST_F(PointerEvents, makeADragThatTheProgramSees)
{
    pointer().buttonEvent(Pointer::LeftDown);
    pointer().moveTo(place + QPoint(120, -60));
    EXPECT_EQ(pointer().position(), place + QPoint(120, -60));
    pointer().buttonEvent(Pointer::LeftUp);
    const QStringList seen = events(*window, {u"button up"_s}, 1, 5);
    EXPECT_EQ(seen, QStringList{u"button up 1 %1 %2"_s.arg(place.x() + 120).arg(place.y() - 60)});
    EXPECT_FALSE(window->seen({u"motion"_s}).isEmpty());
}

TEST_F(PointerEvents, letGoOfWhatTheyPressed)
{
    pointer().buttonEvent(Pointer::LeftDown | Pointer::RightDown);
    events(*window, {u"button down"_s}, 2, 3);
    pointer().releaseAll();
    QStringList released = events(*window, {u"button up"_s}, 2, 3);
    released.sort();
    EXPECT_EQ(released, (QStringList{u"button up 1"_s, u"button up 3"_s}));
    // Nothing is released twice, nor what was never pressed.
    window->forget();
    pointer().releaseAll();
    pointer().buttonEvent(Pointer::RightDown);
    pointer().buttonEvent(Pointer::RightUp);
    EXPECT_EQ(events(*window, {u"button"_s}, 2, 3), (QStringList{u"button down 3"_s, u"button up 3"_s}));
}

TEST_F(PointerEvents, keepTheirOrderWithTheKeyboard)
{
    platform->keyboard().keyEvent(17, 0);
    pointer().buttonEvent(Pointer::LeftDown | Pointer::LeftUp);
    tap('A');
    platform->keyboard().keyEvent(17, Keyboard::KeyUp);
    EXPECT_EQ(events(*window, {u"key"_s, u"button"_s}, 6, 2),
        (QStringList{
            u"key down"_s, u"button down"_s, u"button up"_s, u"key down"_s, u"key up"_s, u"key up"_s}));
}

TEST_F(PointerEvents, doNotWaitForTheReceiver)
{
    tap('H');
    ASSERT_TRUE(waitUntil([&] { return !window->seen({u"hangs"_s}).isEmpty(); }));
    // Both return while the program hangs.
    pointer().buttonEvent(Pointer::LeftDown | Pointer::LeftUp);
    tap('A');
    EXPECT_TRUE(window->seen({u"button"_s}).isEmpty());
    window->goOn();
    EXPECT_EQ(events(*window, {u"button"_s}, 2, 3), (QStringList{u"button down 1"_s, u"button up 1"_s}));
}

} // namespace plum::contract
