#include "desktop/support/ports_test.h"

#include <cstdlib>
#include <xcb/xcb.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class OneManagerTest : public DesktopTest
{
protected:
    void SetUp() override { startDesktop(u"openbox"_s); }
};

// What keys have typed into a window.
QString typedInto(Probe &probe)
{
    QString text;
    for (const QString &line : probe.seen({u"key down"_s}))
        text += line.section(u' ', 4);
    return text;
}

// Counts how often the server has told programs of another keyboard map.
class MapChanges
{
public:
    MapChanges()
        : m_server(xcb_connect(nullptr, nullptr))
    {
    }
    ~MapChanges() { xcb_disconnect(m_server); }
    Q_DISABLE_COPY_MOVE(MapChanges)

    int soFar() const
    {
        int count = 0;
        std::free(xcb_get_input_focus_reply(m_server, xcb_get_input_focus(m_server), nullptr));
        while (xcb_generic_event_t *event = xcb_poll_for_event(m_server)) {
            if (event->response_type == XCB_MAPPING_NOTIFY)
                ++count;
            std::free(event);
        }
        return count;
    }

private:
    xcb_connection_t *m_server;
};

class KeyboardPort : public PortsTest<OneManagerTest>
{
protected:
    Keyboard &keyboard() { return platform->keyboard(); }

    void tap(quint8 key)
    {
        keyboard().keyEvent(key, 0);
        keyboard().keyEvent(key, Keyboard::KeyUp);
    }
};

} // namespace

// What still waited in a socket would happen after a stop.
TEST_F(KeyboardPort, hasHappenedWhenTheCallReturns)
{
    constexpr int motions = 1000;
    for (int round = 1; round <= 4; ++round) {
        for (int motion = 1; motion <= motions; ++motion)
            platform->pointer().moveTo({motion % 500, round});
        ASSERT_EQ(view->pointer(), QPoint(motions % 500, round));
        for (int taps = 0; taps < 100; ++taps)
            tap('A');
        ASSERT_TRUE(view->keysDown().empty()) << round;
        keyboard().keyEvent('B', 0);
        ASSERT_EQ(view->keysDown().size(), 1U) << round;
        platform->pointer().buttonEvent(Pointer::LeftDown);
        ASSERT_TRUE(view->anyButtonDown()) << round;
        platform->pointer().buttonEvent(Pointer::LeftUp);
        ASSERT_FALSE(view->anyButtonDown()) << round;
        keyboard().keyEvent('B', Keyboard::KeyUp);
    }
}

TEST_F(KeyboardPort, pressesEveryKeyThatHasASymbol)
{
    struct Key
    {
        quint8 code;
        QString symbol;
    };
    const Key keys[] = {{8, u"ff08"_s}, {9, u"ff09"_s}, {13, u"ff0d"_s}, {16, u"ffe1"_s}, {17, u"ffe3"_s},
        {18, u"ffe9"_s}, {27, u"ff1b"_s}, {32, u"20"_s}, {33, u"ff55"_s}, {34, u"ff56"_s}, {35, u"ff57"_s},
        {36, u"ff50"_s}, {37, u"ff51"_s}, {38, u"ff52"_s}, {39, u"ff53"_s}, {40, u"ff54"_s}, {45, u"ff63"_s},
        {46, u"ffff"_s}, {48, u"30"_s}, {57, u"39"_s}, {65, u"61"_s}, {90, u"7a"_s}, {112, u"ffbe"_s},
        {123, u"ffc9"_s}, {91, u"ffeb"_s}};
    for (const Key &key : keys) {
        probe->forget();
        tap(key.code);
        ASSERT_TRUE(eventually([&] { return probe->seen({u"key up"_s}).size() == 1; })) << int(key.code);
        EXPECT_EQ(probe->seen({u"key down"_s}).value(0).section(u' ', 2, 2), key.symbol) << int(key.code);
    }
}

TEST_F(KeyboardPort, releasesTheKeyItPressedThoughTheLayoutHasChanged)
{
    keyboard().keyEvent('Q', 0);
    ASSERT_TRUE(eventually([&] { return view->keysDown().size() == 1; }));
    outputOf(u"setxkbmap"_s, {u"-layout"_s, u"fr"_s});
    keyboard().keyEvent('Q', Keyboard::KeyUp);
    EXPECT_TRUE(eventually([&] { return view->keysDown().empty(); }));
}

TEST_F(KeyboardPort, followsALayoutThatChangesMeanwhile)
{
    tap('Q');
    ASSERT_TRUE(probe->sees(u"key up 71 0 q"_s));
    probe->forget();
    outputOf(u"setxkbmap"_s, {u"-layout"_s, u"fr"_s});
    tap('Q');
    EXPECT_TRUE(probe->sees(u"key up 71 0 q"_s));
    probe->forget();
    outputOf(u"setxkbmap"_s, {u"-layout"_s, u"us,ru"_s});
    view->lockLayoutGroup(1);
    ASSERT_EQ(view->layoutGroup(), 1);
    tap('Q');
    EXPECT_TRUE(probe->sees(u"key up 71 0 q"_s));
    probe->forget();
    view->lockLayoutGroup(0);
    ASSERT_EQ(view->layoutGroup(), 0);
    tap('Q');
    EXPECT_TRUE(probe->sees(u"key up 71 0 q"_s));
}

// Each change makes every program read the map anew.
TEST_F(KeyboardPort, typesAThousandDifferentCharactersWithFewChangesOfTheMap)
{
    constexpr char16_t first = 0x4e00;
    constexpr int count = 1000;
    constexpr int fewChanges = 60;
    const std::vector<xcb_keysym_t> before = view->keyboardMap();
    const MapChanges changes;
    QString text;
    for (char16_t character = first; character < first + count; ++character)
        text += QChar(character);
    EXPECT_TRUE(keyboard().typeText(text));
    EXPECT_TRUE(eventually([&] { return typedInto(*probe).size() >= count; }));
    EXPECT_EQ(typedInto(*probe), text);
    EXPECT_LT(changes.soFar(), fewChanges);
    keyboard().releaseAll();
    EXPECT_EQ(view->keyboardMap(), before);
}

TEST_F(KeyboardPort, typesBothCasesWithCapsLock)
{
    const QString text = u"aÄäЖж你ß"_s;
    tap(20);
    EXPECT_TRUE(keyboard().typeText(text));
    EXPECT_TRUE(eventually([&] { return typedInto(*probe) == text; }))
        << qPrintable(probe->seen({u"key down"_s}).join(u'\n'));
    tap(20);
}

TEST_F(KeyboardPort, makesItsKeysAgainInALayoutThatChangesMeanwhile)
{
    EXPECT_TRUE(keyboard().typeText(u"你好"_s));
    ASSERT_TRUE(eventually([&] { return typedInto(*probe) == u"你好"_s; }));
    outputOf(u"setxkbmap"_s, {u"-layout"_s, u"fr"_s});
    EXPECT_TRUE(keyboard().typeText(u"好你"_s));
    EXPECT_TRUE(eventually([&] { return typedInto(*probe) == u"你好好你"_s; }))
        << qPrintable(typedInto(*probe));
}

TEST_F(KeyboardPort, givesTheKeyboardMapBack)
{
    outputOf(u"setxkbmap"_s, {u"-layout"_s, u"ru"_s});
    const std::vector<xcb_keysym_t> before = view->keyboardMap();
    for (quint8 letter = 'A'; letter <= 'Z'; ++letter)
        tap(letter);
    ASSERT_TRUE(probe->sees(u"key up 7a 0 z"_s));
    EXPECT_NE(view->keyboardMap(), before);
    keyboard().releaseAll();
    EXPECT_EQ(view->keyboardMap(), before);
    // And makes the keys again when they are needed again.
    probe->forget();
    tap('Z');
    EXPECT_TRUE(probe->sees(u"key up 7a 0 z"_s));
    keyboard().releaseAll();
    EXPECT_EQ(view->keyboardMap(), before);
}

} // namespace plum
