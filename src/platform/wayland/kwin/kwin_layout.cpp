#include "platform/wayland/kwin/kwin_layout.h"

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <utility>

namespace plum {

namespace {

// XKB counts eight on top of the kernel.
constexpr xkb_keycode_t offset = 8;
constexpr quint16 leftShift = 42;

xkb_keycode_t lastKey(xkb_keymap *keymap)
{
    return std::min(xkb_keymap_max_keycode(keymap), xkb_keycode_t{KWinLayout::codes} + offset - 1);
}

struct StateFreer
{
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};

xkb_mod_mask_t maskOf(xkb_keymap *keymap, const char *modifier)
{
    const xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap, modifier);
    return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t{1} << index;
}

} // namespace

void KWinLayout::Freer::operator()(xkb_context *context) const
{
    xkb_context_unref(context);
}

void KWinLayout::Freer::operator()(xkb_keymap *keymap) const
{
    xkb_keymap_unref(keymap);
}

KWinLayout::KWinLayout()
    : m_context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES))
{
}

KWinLayout::~KWinLayout() = default;

void KWinLayout::setKeymap(const QByteArray &text)
{
    m_keymap.reset(m_context ? xkb_keymap_new_from_string(m_context.get(), text.constData(),
                       XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS)
                             : nullptr);
    m_isFilled = false;
}

void KWinLayout::setGroup(quint32 group)
{
    if (std::exchange(m_group, group) != group)
        m_isFilled = false;
}

void KWinLayout::setCapsLocked(bool isLocked)
{
    if (std::exchange(m_isCapsLocked, isLocked) != isLocked)
        m_isFilled = false;
}

// The key that has `symbol` without any modifier; 0 for none. Maps have keys of that kind twice, and the one
// that keyboards really have comes last.
quint16 KWinLayout::codeOf(quint32 symbol) const
{
    const xkb_keycode_t first = xkb_keymap_min_keycode(m_keymap.get());
    for (xkb_keycode_t key = lastKey(m_keymap.get()); key >= first && key > offset; --key) {
        const xkb_keysym_t *symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, m_group, 0, &symbols) == 1
            && symbols[0] == symbol)
            return static_cast<quint16>(key - offset);
    }
    return 0;
}

// Each character by the first key that has it: letters, digits and signs come before those of the number pad.
void KWinLayout::fill()
{
    m_isFilled = true;
    m_strokes.clear();
    const std::unique_ptr<xkb_state, StateFreer> state(m_keymap ? xkb_state_new(m_keymap.get()) : nullptr);
    if (!state)
        return;
    const xkb_mod_mask_t shift = maskOf(m_keymap.get(), XKB_MOD_NAME_SHIFT);
    const xkb_mod_mask_t levelThree = maskOf(m_keymap.get(), "LevelThree");
    const quint16 levelThreeCode = codeOf(XKB_KEY_ISO_Level3_Shift);
    const xkb_mod_mask_t locked = m_isCapsLocked ? maskOf(m_keymap.get(), XKB_MOD_NAME_CAPS) : 0;
    struct Held
    {
        xkb_mod_mask_t mask;
        LayoutStroke stroke;
    };
    const std::array all{Held{0, {}}, Held{shift, {.shift = leftShift}},
        Held{levelThree, {.levelThree = levelThreeCode}},
        Held{shift | levelThree, {.shift = leftShift, .levelThree = levelThreeCode}}};
    const std::size_t usable = levelThree && levelThreeCode ? all.size() : 2;
    const xkb_keycode_t last = lastKey(m_keymap.get());
    for (xkb_keycode_t key = offset + 1; key <= last; ++key) {
        for (std::size_t i = 0; i < usable; ++i) {
            xkb_state_update_mask(state.get(), all[i].mask, 0, locked, 0, 0, m_group);
            if (const uint32_t character = xkb_state_key_get_utf32(state.get(), key)) {
                LayoutStroke stroke = all[i].stroke;
                stroke.code = static_cast<quint16>(key - offset);
                m_strokes.try_emplace(character, stroke);
            }
        }
    }
}

std::optional<LayoutStroke> KWinLayout::strokeFor(char32_t character)
{
    if (!m_isFilled)
        fill();
    const auto found = m_strokes.find(character);
    return found == m_strokes.end() ? std::nullopt : std::optional(found->second);
}

} // namespace plum
