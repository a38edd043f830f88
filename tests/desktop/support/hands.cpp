#include "desktop/support/hands.h"

#include <QStringList>
#include <QThread>

#include <array>
#include <cstdlib>
#include <memory>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned long handPace = 8; // milliseconds from one place of the mouse to the next

} // namespace

Hands::Hands(const QString &display)
    : m_connection(xcb_connect(display.toLatin1().constData(), nullptr))
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    , m_firstKey(xcb_get_setup(m_connection)->min_keycode)
{
    const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> map(
        xcb_get_keyboard_mapping_reply(m_connection,
            xcb_get_keyboard_mapping(m_connection, m_firstKey,
                static_cast<uint8_t>(xcb_get_setup(m_connection)->max_keycode - m_firstKey + 1)),
            nullptr),
        &std::free);
    if (!map)
        return;
    m_symbolsPerKey = map->keysyms_per_keycode;
    const xcb_keysym_t *first = xcb_get_keyboard_mapping_keysyms(map.get());
    m_symbols.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(map.get()));
}

Hands::~Hands()
{
    xcb_disconnect(m_connection);
}

void Hands::fake(uint8_t type, uint8_t detail)
{
    xcb_test_fake_input(m_connection, type, detail, XCB_CURRENT_TIME, m_root, 0, 0, 0);
}

// Returns when the server has done everything.
void Hands::sync()
{
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

void Hands::moveTo(QPoint point)
{
    xcb_test_fake_input(m_connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_root,
        static_cast<int16_t>(point.x()), static_cast<int16_t>(point.y()), 0);
    sync();
}

void Hands::press(Button button)
{
    fake(XCB_BUTTON_PRESS, button);
    sync();
}

void Hands::release(Button button)
{
    fake(XCB_BUTTON_RELEASE, button);
    sync();
}

void Hands::click(QPoint point, Button button)
{
    moveTo(point);
    press(button);
    release(button);
}

void Hands::doubleClick(QPoint point)
{
    moveTo(point);
    // In one go: programs tell two clicks from a double one by the server's time.
    for (int click = 0; click < 2; ++click) {
        fake(XCB_BUTTON_PRESS, Left);
        fake(XCB_BUTTON_RELEASE, Left);
    }
    sync();
}

void Hands::pull(QPoint from, QPoint to)
{
    constexpr int steps = 12;
    moveTo(from);
    press();
    for (int step = 1; step <= steps; ++step) {
        QThread::msleep(handPace);
        moveTo(from + (to - from) * step / steps);
    }
}

Hands::Key Hands::find(xcb_keysym_t symbol) const
{
    for (size_t at = 0; at < m_symbols.size(); ++at) {
        const size_t level = at % static_cast<size_t>(m_symbolsPerKey);
        if (m_symbols[at] == symbol && level < 2)
            return {static_cast<xcb_keycode_t>(m_firstKey + at / static_cast<size_t>(m_symbolsPerKey)),
                level == 1};
    }
    qFatal("the keyboard has no symbol %x", symbol);
}

xcb_keysym_t Hands::symbolOf(const QString &name)
{
    static constexpr std::array modifiers{std::pair{"alt"_L1, XKB_KEY_Alt_L},
        std::pair{"ctrl"_L1, XKB_KEY_Control_L}, std::pair{"shift"_L1, XKB_KEY_Shift_L}};
    for (const auto &[modifier, symbol] : modifiers) {
        if (name == modifier)
            return static_cast<xcb_keysym_t>(symbol);
    }
    return xkb_keysym_from_name(name.toLatin1().constData(), XKB_KEYSYM_NO_FLAGS);
}

void Hands::sendCombination(const QString &combination)
{
    const QStringList names = combination.split(u'+');
    for (const QString &name : names)
        fake(XCB_KEY_PRESS, find(symbolOf(name)).code);
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        fake(XCB_KEY_RELEASE, find(symbolOf(*name)).code);
}

void Hands::sendText(const QString &text)
{
    const xcb_keycode_t shift = find(XKB_KEY_Shift_L).code;
    for (const QChar character : text) {
        const Key key = find(xkb_utf32_to_keysym(character.unicode()));
        if (key.shifted)
            fake(XCB_KEY_PRESS, shift);
        fake(XCB_KEY_PRESS, key.code);
        fake(XCB_KEY_RELEASE, key.code);
        if (key.shifted)
            fake(XCB_KEY_RELEASE, shift);
    }
}

void Hands::key(const QString &combination)
{
    sendCombination(combination);
    sync();
}

void Hands::type(const QString &text)
{
    sendText(text);
    sync();
}

void Hands::keyAndType(const QString &combination, const QString &text)
{
    sendCombination(combination);
    sendText(text);
    sync();
}

void Hands::keyDown(const QString &name)
{
    fake(XCB_KEY_PRESS, find(symbolOf(name)).code);
    sync();
}

void Hands::keyUp(const QString &name)
{
    fake(XCB_KEY_RELEASE, find(symbolOf(name)).code);
    sync();
}

} // namespace plum
