#include "platform/wayland/kwin/kwin_layout.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>

namespace plum {

namespace {

constexpr quint16 leftShift = 42;
constexpr quint16 altGr = 100;
constexpr quint16 keyA = 30;
constexpr quint16 keyQ = 16;
constexpr quint16 keyZ = 44;
constexpr quint16 keyY = 21;

// The map of layouts, in the form in which a compositor hands it out.
QByteArray keymap(const char *layouts)
{
    xkb_context *context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layouts, .variant = "", .options = ""};
    xkb_keymap *map = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    char *text = xkb_keymap_get_as_string(map, XKB_KEYMAP_FORMAT_TEXT_V1);
    const QByteArray result(text);
    std::free(text);
    xkb_keymap_unref(map);
    xkb_context_unref(context);
    return result;
}

class KeyLayout : public testing::Test
{
protected:
    void expect(char32_t character, quint16 code, quint16 shift = 0, quint16 levelThree = 0)
    {
        const auto stroke = layout.strokeFor(character);
        ASSERT_TRUE(stroke) << quint32(character);
        EXPECT_EQ(stroke->code, code) << quint32(character);
        EXPECT_EQ(stroke->shift, shift) << quint32(character);
        EXPECT_EQ(stroke->levelThree, levelThree) << quint32(character);
    }

    KWinLayout layout;
};

} // namespace

TEST_F(KeyLayout, typesNothingWithoutAMap)
{
    EXPECT_FALSE(layout.strokeFor(U'a'));
    layout.setKeymap("no map");
    EXPECT_FALSE(layout.strokeFor(U'a'));
}

TEST_F(KeyLayout, takesTheLevelsOfShiftAndAltGr)
{
    layout.setKeymap(keymap("de"));
    expect(U'a', keyA);
    expect(U'A', keyA, leftShift);
    expect(U'z', keyY);
    expect(U'y', keyZ);
    expect(U'@', keyQ, 0, altGr);
    expect(U'Ä', 40, leftShift);
    expect(U'1', 2); // not that of the number pad
    EXPECT_FALSE(layout.strokeFor(U'你'));
    EXPECT_FALSE(layout.strokeFor(U'Ж'));
}

TEST_F(KeyLayout, takesCapsLockIntoAccount)
{
    layout.setKeymap(keymap("de"));
    layout.setCapsLocked(true);
    expect(U'a', keyA, leftShift);
    expect(U'A', keyA);
    expect(U'@', keyQ, 0, altGr);
    layout.setCapsLocked(false);
    expect(U'a', keyA);
}

TEST_F(KeyLayout, followsTheLayoutInForce)
{
    layout.setKeymap(keymap("us,ru"));
    expect(U'a', keyA);
    EXPECT_FALSE(layout.strokeFor(U'ф'));
    layout.setGroup(1);
    expect(U'ф', keyA);
    expect(U'Ф', keyA, leftShift);
    EXPECT_FALSE(layout.strokeFor(U'a'));
}

} // namespace plum
