#include "screen_watch.h"

#include <algorithm>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <thread>
#include <xcb/xtest.h>

namespace plum {

namespace {

using namespace std::chrono_literals;

template <typename T> using Owned = std::unique_ptr<T, decltype(&std::free)>;

template <typename T> Owned<T> owned(T *reply)
{
    return Owned<T>(reply, &std::free);
}

constexpr uint32_t colourBits = 0xffffff;

xcb_keysym_t symbolOf(const std::string &name)
{
    static const std::map<std::string, xcb_keysym_t> names{{"alt", 0xffe9}, {"ctrl", 0xffe3},
        {"shift", 0xffe1}, {"super", 0xffeb}, {"space", 0x20}, {"Return", 0xff0d}, {"Escape", 0xff1b},
        {"BackSpace", 0xff08}};
    if (const auto found = names.find(name); found != names.end())
        return found->second;
    if (name.size() != 1)
        throw std::runtime_error("no key " + name);
    return static_cast<xcb_keysym_t>(name.front());
}

xcb_keycode_t codeOf(xcb_connection_t *connection, const std::string &name)
{
    const xcb_keysym_t symbol = symbolOf(name);
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const auto first = setup->min_keycode;
    const auto count = static_cast<uint8_t>(setup->max_keycode - first + 1);
    const auto map = owned(xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, first, count), nullptr));
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int code = 0; code < count; ++code) {
        if (symbols[code * map->keysyms_per_keycode] == symbol)
            return static_cast<xcb_keycode_t>(first + code);
    }
    throw std::runtime_error("the keyboard has no key " + name);
}

} // namespace

ScreenWatch::ScreenWatch()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_connection))
        throw std::runtime_error("no display");
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_root = screen->root;
    m_width = screen->width_in_pixels;
    m_height = screen->height_in_pixels;

    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &events);

    const int id = shmget(IPC_PRIVATE, static_cast<size_t>(m_width * m_height) * 4, IPC_CREAT | 0600);
    m_pixels = static_cast<const uint32_t *>(shmat(id, nullptr, 0));
    m_segment = xcb_generate_id(m_connection);
    free(xcb_request_check(
        m_connection, xcb_shm_attach_checked(m_connection, m_segment, static_cast<uint32_t>(id), 0)));
    shmctl(id, IPC_RMID, nullptr);

    const auto version = owned(
        xcb_damage_query_version_reply(m_connection, xcb_damage_query_version(m_connection, 1, 1), nullptr));
    const xcb_query_extension_reply_t *damage = xcb_get_extension_data(m_connection, &xcb_damage_id);
    if (!version || !damage || !damage->present)
        throw std::runtime_error("the X server does not tell of changes");
    m_damageEvent = static_cast<uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
    m_damage = xcb_generate_id(m_connection);
    xcb_damage_create(m_connection, m_damage, m_root, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(m_connection);
}

ScreenWatch::~ScreenWatch()
{
    xcb_disconnect(m_connection);
}

const uint32_t *ScreenWatch::grab(const xcb_rectangle_t &part)
{
    const auto done = owned(xcb_shm_get_image_reply(m_connection,
        xcb_shm_get_image(m_connection, m_root, part.x, part.y, part.width, part.height, ~0u,
            XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment, 0),
        nullptr));
    if (!done)
        throw std::runtime_error("the screen cannot be read");
    return m_pixels;
}

Picture ScreenWatch::learn(std::chrono::milliseconds duration)
{
    constexpr auto pause = 40ms;
    const xcb_rectangle_t all{0, 0, static_cast<uint16_t>(m_width), static_cast<uint16_t>(m_height)};
    const auto count = static_cast<size_t>(m_width * m_height);
    Picture picture;
    for (const auto end = Clock::now() + duration; Clock::now() < end; std::this_thread::sleep_for(pause)) {
        const uint32_t *seen = grab(all);
        if (picture.pixels.empty()) {
            picture.pixels.resize(count);
            std::transform(
                seen, seen + count, picture.pixels.begin(), [](uint32_t p) { return p & colourBits; });
            continue;
        }
        for (size_t i = 0; i < count; ++i) {
            if ((seen[i] & colourBits) != picture.pixels[i])
                picture.pixels[i] = Picture::moves;
        }
    }
    return picture;
}

Sign ScreenWatch::difference(const Picture &before, const Picture &after, int width)
{
    Sign sign;
    int left = width;
    int right = 0;
    int top = 0;
    int bottom = 0;
    for (size_t i = 0; i < after.pixels.size(); ++i) {
        const uint32_t colour = after.pixels[i];
        if (colour == Picture::moves || before.pixels[i] == Picture::moves || before.pixels[i] == colour)
            continue;
        const int x = static_cast<int>(i) % width;
        const int y = static_cast<int>(i) / width;
        if (sign.pixels.empty())
            top = y;
        bottom = y;
        left = std::min(left, x);
        right = std::max(right, x);
        sign.pixels.push_back({static_cast<uint16_t>(x), static_cast<uint16_t>(y), colour});
    }
    if (sign.pixels.empty())
        throw std::runtime_error("the two pictures do not differ");
    sign.around = {static_cast<int16_t>(left), static_cast<int16_t>(top),
        static_cast<uint16_t>(right - left + 1), static_cast<uint16_t>(bottom - top + 1)};
    return sign;
}

bool ScreenWatch::shows(const Sign &sign)
{
    const uint32_t *seen = grab(sign.around);
    return std::ranges::all_of(sign.pixels, [&](const Sign::Pixel &pixel) {
        const int at = (pixel.y - sign.around.y) * sign.around.width + pixel.x - sign.around.x;
        return (seen[at] & colourBits) == pixel.colour;
    });
}

Clock::time_point ScreenWatch::press(const std::string &keys)
{
    std::vector<xcb_keycode_t> codes;
    for (size_t from = 0; from <= keys.size();) {
        const size_t plus = std::min(keys.find('+', from), keys.size());
        codes.push_back(codeOf(m_connection, keys.substr(from, plus - from)));
        from = plus + 1;
    }
    const auto send = [&](uint8_t type, xcb_keycode_t code) {
        xcb_test_fake_input(m_connection, type, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    };
    const Clock::time_point moment = Clock::now();
    for (const xcb_keycode_t code : codes)
        send(XCB_KEY_PRESS, code);
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        send(XCB_KEY_RELEASE, *code);
    xcb_flush(m_connection);
    return moment;
}

void ScreenWatch::waitForEvent(std::chrono::microseconds time)
{
    xcb_flush(m_connection);
    pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
    const timespec limit{0, static_cast<long>(time.count()) * 1000};
    ppoll(&descriptor, 1, &limit, nullptr);
}

std::optional<Clock::time_point> ScreenWatch::awaitSign(const Sign &sign, std::chrono::milliseconds patience)
{
    Clock::time_point changed = Clock::now();
    const auto end = changed + patience;
    while (!shows(sign)) {
        bool hasChanged = false;
        while (!hasChanged) {
            if (Clock::now() > end)
                return {};
            while (const auto event = owned(xcb_poll_for_event(m_connection)))
                hasChanged |= (event->response_type & 0x7f) == m_damageEvent;
            if (!hasChanged)
                waitForEvent(10ms);
        }
        changed = Clock::now();
    }
    return changed;
}

xcb_window_t ScreenWatch::focus()
{
    const auto reply
        = owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return reply ? reply->focus : static_cast<xcb_window_t>(XCB_NONE);
}

void ScreenWatch::forgetEvents()
{
    m_focusBefore = focus();
    while (owned(xcb_poll_for_event(m_connection))) { }
}

std::optional<ScreenWatch::Arrival> ScreenWatch::awaitWindow(std::chrono::milliseconds patience)
{
    std::optional<Clock::time_point> mapped;
    bool needsNoFocus = false;
    for (const auto end = Clock::now() + patience; Clock::now() < end;) {
        while (const auto event = owned(xcb_poll_for_event(m_connection))) {
            if (mapped || (event->response_type & 0x7f) != XCB_MAP_NOTIFY)
                continue;
            mapped = Clock::now();
            const auto window = reinterpret_cast<const xcb_map_notify_event_t *>(event.get())->window;
            // A window manager's frame is not managed either, but has a window in it.
            const auto tree
                = owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
            const auto attributes = owned(xcb_get_window_attributes_reply(
                m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
            needsNoFocus = attributes && attributes->override_redirect && tree
                && xcb_query_tree_children_length(tree.get()) == 0;
        }
        if (mapped && (needsNoFocus || focus() != m_focusBefore))
            return Arrival{*mapped, Clock::now()};
        waitForEvent(200us);
    }
    return {};
}

} // namespace plum
