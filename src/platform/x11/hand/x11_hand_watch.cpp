#include "platform/x11/hand/x11_hand_watch.h"

#include "platform/global_hotkey.h"
#include "platform/stop_signal.h"
#include "platform/x11/connection/x11_connection.h"
#include "platform/x11/hand/held_key.h"

#include <algorithm>
#include <bitset>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace plum {

namespace {

using Clock = HeldKey::Clock;
using Keys = std::bitset<256>; // by keycode

// A run that is over so soon is not worth a connection.
constexpr int firstLook = 30; // milliseconds

struct ModifierKeys
{
    quint32 flag;
    std::array<xcb_keysym_t, 2> symbols;
};

constexpr std::array modifierKeys{ModifierKeys{GlobalHotkey::Alt, {XKB_KEY_Alt_L, XKB_KEY_Alt_R}},
    ModifierKeys{GlobalHotkey::Control, {XKB_KEY_Control_L, XKB_KEY_Control_R}},
    ModifierKeys{GlobalHotkey::Shift, {XKB_KEY_Shift_L, XKB_KEY_Shift_R}}};

// The keyboard as it is seen through one connection.
class KeyboardView
{
public:
    explicit KeyboardView(const HandSigns &signs)
        : m_signs(signs)
    {
    }

    bool open()
    {
        if (!m_connection.isOpen())
            return false;
        const xcb_query_extension_reply_t *extension
            = xcb_get_extension_data(m_connection.xcb(), &xcb_input_id);
        if (!extension || !extension->present)
            return false;
        m_opcode = extension->major_opcode;
        // From 2.1 on raw events arrive also while somebody has grabbed the keyboard.
        const auto version = m_connection.reply(
            xcb_input_xi_query_version_reply, xcb_input_xi_query_version, uint16_t(2), uint16_t(2));
        if (!version || version->major_version < 2 || version->minor_version < 1)
            return false;
        constexpr uint32_t ofKeys
            = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
        constexpr uint32_t ofMouse
            = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
        select(XCB_INPUT_DEVICE_ALL_MASTER, m_signs.atWork ? ofKeys | ofMouse : ofKeys);
        select(XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
        readKeys();
        readDevices();
        takeHeldKeys();
        return true;
    }

    int descriptor() const { return xcb_get_file_descriptor(m_connection.xcb()); }
    bool isOpen() const { return m_connection.isOpen(); }

    // Looks at what has arrived, and says whether it asks for the end of the run.
    bool look()
    {
        bool isStop = false;
        while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.xcb())})
            isStop = isStopping(*event) || isStop;
        if (m_escape.isHeldFor(heldEscape, Clock::now())) {
            m_escape.forget();
            isStop = true;
        }
        return isStop;
    }

    // Until when nothing can happen unless an event arrives; -1 for ever.
    int milliseconds()
    {
        const Clock::time_point now = Clock::now();
        const auto again = m_escape.lookAgainAt(heldEscape, now);
        if (!again)
            return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*again - now).count();
        return static_cast<int>(std::max<qint64>(left, 1));
    }

private:
    static constexpr std::chrono::milliseconds heldEscape{HandSigns::heldEscape};

    void select(xcb_input_device_id_t device, uint32_t events)
    {
        struct
        {
            xcb_input_event_mask_t head;
            uint32_t events;
        } mask{{device, 1}, events};
        xcb_input_xi_select_events(m_connection.xcb(), m_connection.root(), 1, &mask.head);
        m_connection.flush();
    }

    // A hand may have pressed Esc before anybody looked.
    void takeHeldKeys()
    {
        for (const xcb_input_device_id_t device : m_keyboards) {
            const auto state = m_connection.reply(xcb_input_query_device_state_reply,
                xcb_input_query_device_state, static_cast<uint8_t>(device));
            if (!state)
                continue;
            for (auto each = xcb_input_query_device_state_classes_iterator(state.get()); each.rem > 0;
                 xcb_input_input_state_next(&each)) {
                if (each.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
                    continue;
                const auto *keys = reinterpret_cast<const xcb_input_key_state_t *>(each.data)->keys;
                for (std::size_t key = 0; key < Keys().size(); ++key) {
                    if ((keys[key / 8] >> (key % 8) & 1) != 0)
                        isStopping(key, true, true);
                }
            }
        }
    }

    // Those whose events programs make, and the others that have keys.
    void readDevices()
    {
        m_ofPrograms.clear();
        m_keyboards.clear();
        const xcb_atom_t mark = m_connection.atom("XTEST Device");
        const auto devices = m_connection.reply(xcb_input_xi_query_device_reply, xcb_input_xi_query_device,
            xcb_input_device_id_t(XCB_INPUT_DEVICE_ALL));
        if (!devices)
            return;
        for (auto each = xcb_input_xi_query_device_infos_iterator(devices.get()); each.rem > 0;
             xcb_input_xi_device_info_next(&each)) {
            const xcb_input_device_id_t device = each.data->deviceid;
            const auto property
                = m_connection.reply(xcb_input_xi_get_property_reply, xcb_input_xi_get_property, device,
                    uint8_t(0), mark, xcb_atom_t(XCB_ATOM_ANY), uint32_t(0), uint32_t(1));
            if (property && property->num_items > 0)
                m_ofPrograms.push_back(device);
            else if (each.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD
                || each.data->type == XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE)
                m_keyboards.push_back(device);
        }
    }

    void readKeys()
    {
        m_escapeKeys.reset();
        m_letterKeys.reset();
        m_modifiers = {};
        const xcb_setup_t *setup = xcb_get_setup(m_connection.xcb());
        const int count = setup->max_keycode - setup->min_keycode + 1;
        const auto mapping = m_connection.reply(xcb_get_keyboard_mapping_reply, xcb_get_keyboard_mapping,
            setup->min_keycode, static_cast<uint8_t>(count));
        if (!mapping)
            return;
        const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
        const int perKey = mapping->keysyms_per_keycode;
        for (int index = 0; index < count * perKey; ++index)
            note(static_cast<std::size_t>(setup->min_keycode + index / perKey), symbols[index]);
    }

    void note(std::size_t key, xcb_keysym_t symbol)
    {
        if (symbol == XKB_KEY_Escape)
            m_escapeKeys.set(key);
        if (m_signs.hotkey.virtualKey != 0
            && symbol == xcb_keysym_t(m_signs.hotkey.virtualKey - 'A' + XKB_KEY_a))
            m_letterKeys.set(key);
        for (std::size_t index = 0; index < modifierKeys.size(); ++index) {
            if (std::ranges::find(modifierKeys[index].symbols, symbol) != modifierKeys[index].symbols.end())
                m_modifiers[index].set(key);
        }
    }

    bool isStopping(const xcb_generic_event_t &event)
    {
        if ((event.response_type & ~0x80) == XCB_MAPPING_NOTIFY)
            readKeys();
        const auto &generic = reinterpret_cast<const xcb_ge_generic_event_t &>(event);
        if ((event.response_type & ~0x80) != XCB_GE_GENERIC || generic.extension != m_opcode)
            return false;
        switch (generic.event_type) {
        case XCB_INPUT_HIERARCHY:
            readDevices();
            return false;
        case XCB_INPUT_RAW_KEY_PRESS:
        case XCB_INPUT_RAW_KEY_RELEASE: {
            const auto &key = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(event);
            const bool isPress = generic.event_type == XCB_INPUT_RAW_KEY_PRESS;
            const bool isHand = isOfHand(key.sourceid);
            if (isPress && isHand)
                noteWork();
            return isStopping(key.detail % Keys().size(), isPress, isHand);
        }
        case XCB_INPUT_RAW_BUTTON_PRESS:
        case XCB_INPUT_RAW_MOTION:
            if (isOfHand(reinterpret_cast<const xcb_input_raw_button_press_event_t &>(event).sourceid))
                noteWork();
            return false;
        default:
            return false;
        }
    }

    bool isOfHand(xcb_input_device_id_t device) const
    {
        return std::ranges::find(m_ofPrograms, device) == m_ofPrograms.end();
    }

    void noteWork() const
    {
        if (m_signs.atWork)
            m_signs.atWork();
    }

    bool isStopping(std::size_t key, bool isPress, bool isHand)
    {
        if (isHand && m_escapeKeys[key])
            isPress ? m_escape.press(Clock::now()) : m_escape.release(Clock::now());
        Keys &down = isHand ? m_downByHand : m_downByPrograms;
        const bool isRepetition = isPress && down[key];
        down.set(key, isPress);
        return isPress && !isRepetition && m_letterKeys[key] && areModifiersDown(down)
            && (isHand || !m_signs.ownKeys.isRecent(m_signs.hotkey.virtualKey));
    }

    // Exactly those of the hotkey.
    bool areModifiersDown(const Keys &down) const
    {
        for (std::size_t index = 0; index < modifierKeys.size(); ++index) {
            const bool isWanted = (m_signs.hotkey.modifiers & modifierKeys[index].flag) != 0;
            if ((down & m_modifiers[index]).any() != isWanted)
                return false;
        }
        return true;
    }

    const HandSigns &m_signs;
    X11Connection m_connection;
    uint8_t m_opcode = 0;
    std::vector<xcb_input_device_id_t> m_ofPrograms;
    std::vector<xcb_input_device_id_t> m_keyboards;
    Keys m_escapeKeys;
    Keys m_letterKeys;
    std::array<Keys, modifierKeys.size()> m_modifiers;
    Keys m_downByHand;
    Keys m_downByPrograms;
    HeldKey m_escape;
};

} // namespace

X11HandWatch::X11HandWatch(const HandSigns &signs)
    : m_end(eventfd(0, EFD_CLOEXEC))
    , m_thread([this, signs] { watch(signs); })
{
}

X11HandWatch::~X11HandWatch()
{
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = write(m_end, &one, sizeof one);
    m_thread.join();
    ::close(m_end);
}

void X11HandWatch::watch(const HandSigns &signs) const
{
    pollfd end{m_end, POLLIN, 0};
    if (poll(&end, 1, firstLook) != 0)
        return;
    KeyboardView keyboard(signs);
    if (!keyboard.open())
        return;
    while (keyboard.isOpen()) {
        if (keyboard.look())
            signs.stop();
        std::array waiting{end, pollfd{keyboard.descriptor(), POLLIN, 0}};
        poll(waiting.data(), waiting.size(), keyboard.milliseconds());
        if (waiting[0].revents != 0)
            return;
    }
}

} // namespace plum
