#include "platform/wayland/kwin/kwin_keyboard.h"

#include "platform/typed_text.h"
#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/kwin/kwin_bus.h"
#include "platform/wayland/wire/key_table.h"

#include <sys/mman.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QByteArray mappedText(int file, uint32_t size)
{
    QByteArray text;
    void *memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (memory != MAP_FAILED) {
        text = QByteArray(static_cast<const char *>(memory));
        munmap(memory, size);
    }
    return text;
}

} // namespace

KWinKeyboard::KWinKeyboard(WaylandConnection &connection, KWinBus &bus)
    : m_connection(connection)
    , m_bus(bus)
{
    if (isThere())
        listenToLayout();
}

void KWinKeyboard::listenToLayout()
{
    static const wl_keyboard_listener listener = [] {
        wl_keyboard_listener made{};
        made.keymap = [](void *layout, wl_keyboard *, uint32_t format, int32_t file, uint32_t size) {
            if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
                static_cast<KWinLayout *>(layout)->setKeymap(mappedText(file, size));
            close(file);
        };
        made.enter = [](void *, wl_keyboard *, uint32_t, wl_surface *, wl_array *) {};
        made.leave = [](void *, wl_keyboard *, uint32_t, wl_surface *) {};
        made.key = [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t) {};
        made.modifiers = [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t) {};
        return made;
    }();
    m_keyboard.reset(wl_seat_get_keyboard(m_connection.seat()));
    wl_keyboard_add_listener(m_keyboard.get(), &listener, &m_layout);
    if (m_connection.keyState()) {
        static constexpr org_kde_kwin_keystate_listener lockListener{
            .stateChanged =
                [](void *layout, org_kde_kwin_keystate *, uint32_t key, uint32_t state) {
                    if (key == ORG_KDE_KWIN_KEYSTATE_KEY_CAPSLOCK) {
                        static_cast<KWinLayout *>(layout)->setCapsLocked(
                            state == ORG_KDE_KWIN_KEYSTATE_STATE_LOCKED);
                    }
                },
        };
        org_kde_kwin_keystate_add_listener(m_connection.keyState(), &lockListener, &m_layout);
        org_kde_kwin_keystate_fetchStates(m_connection.keyState());
    }
    m_connection.roundTrip();
}

bool KWinKeyboard::isThere() const
{
    return m_connection.isOpen() && m_connection.fakeInput();
}

// KWin has an object for its layouts only where there are several.
void KWinKeyboard::lookAtGroup()
{
    const QDBusMessage answer
        = m_bus.call({u"org.kde.keyboard"_s, u"/Layouts"_s, "org.kde.KeyboardLayouts"_L1}, "getLayout"_L1);
    m_layout.setGroup(answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toUInt() : 0);
}

// Letters are where the layout has them, all other keys where a US keyboard has them.
quint16 KWinKeyboard::codeOf(quint8 virtualKey)
{
    const TableKey *key = tableKey(virtualKey);
    if (!key)
        return 0;
    if (virtualKey >= 'A' && virtualKey <= 'Z') {
        if (const auto stroke = m_layout.strokeFor(static_cast<char32_t>(virtualKey - 'A' + 'a')))
            return stroke->code;
    }
    return key->code;
}

void KWinKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    if (!isThere())
        return;
    if (virtualKey >= 'A' && virtualKey <= 'Z' && !(flags & KeyUp))
        lookAtGroup();
    if (const quint16 code = codeOf(virtualKey))
        send(code, !(flags & KeyUp));
    m_connection.roundTrip();
}

void KWinKeyboard::send(quint16 code, bool down)
{
    org_kde_kwin_fake_input_keyboard_key(m_connection.fakeInput(), code,
        down ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    m_down[code] = down;
}

// For a stroke of its own, unless the script holds the key anyhow.
void KWinKeyboard::hold(quint16 code, bool down)
{
    if (code != 0 && !m_down[code]) {
        org_kde_kwin_fake_input_keyboard_key(m_connection.fakeInput(), code,
            down ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    }
}

bool KWinKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    if (!isThere())
        return text.isEmpty();
    lookAtGroup();
    const TypedText wanted = charactersOf(text);
    for (const char32_t character : wanted.characters) {
        const auto stroke = character == U'\n' ? std::optional(LayoutStroke{tableKey('\r')->code, 0, 0})
            : character == U'\t'               ? std::optional(LayoutStroke{tableKey('\t')->code, 0, 0})
                                               : m_layout.strokeFor(character);
        if (!stroke)
            return false;
        before();
        hold(stroke->levelThree, true);
        hold(stroke->shift, true);
        send(stroke->code, true);
        send(stroke->code, false);
        hold(stroke->shift, false);
        hold(stroke->levelThree, false);
        m_connection.roundTrip();
    }
    return wanted.isWhole;
}

void KWinKeyboard::releaseAll()
{
    if (!isThere())
        return;
    for (std::size_t code = 0; code < m_down.size(); ++code) {
        if (m_down[code])
            send(static_cast<quint16>(code), false);
    }
    m_connection.flush();
}

} // namespace plum
