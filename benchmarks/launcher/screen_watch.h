#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <xcb/damage.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace plum {

using Clock = std::chrono::steady_clock;

// What a screen shows while nobody touches it. Pixels that move by themselves, such as a blinking caret, are
// no part of it.
struct Picture
{
    std::vector<uint32_t> pixels; // 0xRRGGBB, or `moves`

    static constexpr uint32_t moves = 0xff000000;
};

// The pixels by which one picture can be told from another.
struct Sign
{
    struct Pixel
    {
        uint16_t x;
        uint16_t y;
        uint32_t colour;
    };

    std::vector<Pixel> pixels; // those of the later picture
    xcb_rectangle_t around{};
};

// Sees an X server's screen from outside every program on it, and presses keys as a keyboard does.
class ScreenWatch
{
public:
    ScreenWatch();
    ~ScreenWatch();
    ScreenWatch(const ScreenWatch &) = delete;
    ScreenWatch &operator=(const ScreenWatch &) = delete;

    // Looks at the screen for `duration`, which has to be longer than a caret's blinking.
    Picture learn(std::chrono::milliseconds duration);

    static Sign difference(const Picture &before, const Picture &after, int width);
    int width() const { return m_width; }

    // Presses and releases keys held together, such as "alt+z"; returns the moment of the press.
    Clock::time_point press(const std::string &keys);

    // The moment at which the last change arrived that made the screen show `sign`; nothing when it does
    // not show it within `patience`.
    std::optional<Clock::time_point> awaitSign(const Sign &sign, std::chrono::milliseconds patience);

    // The moment at which the next top-level window is mapped, and then has the keyboard. A window that no
    // window manager looks after takes the keyboard by itself.
    struct Arrival
    {
        Clock::time_point mapped;
        Clock::time_point ready;
    };
    void forgetEvents();
    std::optional<Arrival> awaitWindow(std::chrono::milliseconds patience);

private:
    const uint32_t *grab(const xcb_rectangle_t &part);
    bool shows(const Sign &sign);
    xcb_window_t focus();
    void waitForEvent(std::chrono::microseconds time);

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
    int m_width;
    int m_height;
    xcb_shm_seg_t m_segment;
    const uint32_t *m_pixels = nullptr;
    xcb_damage_damage_t m_damage;
    uint8_t m_damageEvent = 0;
    xcb_window_t m_focusBefore = XCB_NONE;
};

} // namespace plum
