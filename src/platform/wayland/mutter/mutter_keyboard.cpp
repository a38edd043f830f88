#include "platform/wayland/mutter/mutter_keyboard.h"

#include "platform/typed_text.h"
#include "platform/wayland/mutter/desktop_extension.h"
#include "platform/wayland/mutter/remote_session.h"
#include "platform/wayland/wire/key_table.h"

#include <QScopeGuard>

#include <algorithm>
#include <xkbcommon/xkbcommon.h>

namespace plum {

namespace {

constexpr std::size_t lentAtOnce = 96; // different characters

quint32 symbolOf(const TableKey &key)
{
    const QByteArray symbols(key.symbols);
    const auto comma = symbols.indexOf(',');
    return xkb_keysym_from_name(
        symbols.first(comma < 0 ? symbols.size() : comma).constData(), XKB_KEYSYM_NO_FLAGS);
}

// Keys that were lent have the symbols of Unicode; those of a layout may have older ones.
quint32 symbolOf(char32_t character, bool isLent)
{
    constexpr quint32 unicode = 0x1000000;
    constexpr char32_t ownNumber = 0x100; // below it symbols are characters
    if (character == U'\n')
        return XKB_KEY_Return;
    if (character == U'\t')
        return XKB_KEY_Tab;
    if (isLent)
        return character < ownNumber ? character : unicode + character;
    return xkb_utf32_to_keysym(character);
}

bool isNamedKey(char32_t character)
{
    return character == U'\n' || character == U'\t';
}

// As many of the characters, from the first one on, as keys can be lent for, and the different ones among
// them.
struct Part
{
    std::size_t length = 0;
    std::vector<char32_t> different;
};

Part firstPart(std::span<const char32_t> characters)
{
    Part part;
    for (const char32_t character : characters) {
        if (!isNamedKey(character) && std::ranges::count(part.different, character) == 0) {
            if (part.different.size() == lentAtOnce)
                break;
            part.different.push_back(character);
        }
        ++part.length;
    }
    return part;
}

} // namespace

void MutterKeyboard::send(quint32 symbol, bool down)
{
    if (!m_session.key(symbol, down))
        return;
    if (down)
        m_down.insert(symbol);
    else
        m_down.erase(symbol);
}

void MutterKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    if (const TableKey *key = tableKey(virtualKey))
        send(symbolOf(*key), !(flags & KeyUp));
}

bool MutterKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    const TypedText wanted = charactersOf(text);
    for (std::span<const char32_t> left = wanted.characters; !left.empty();) {
        const Part part = firstPart(left);
        const bool isLent = m_extension.lendKeys(part.different);
        const auto giveBack = qScopeGuard([&] {
            if (isLent)
                m_extension.giveKeysBack();
        });
        for (const char32_t character : left.first(part.length)) {
            before();
            const quint32 symbol = symbolOf(character, isLent);
            if (!m_session.key(symbol, true) || !m_session.key(symbol, false))
                return false;
        }
        left = left.subspan(part.length);
    }
    return wanted.isWhole;
}

void MutterKeyboard::releaseAll()
{
    for (const quint32 symbol : std::exchange(m_down, {}))
        m_session.key(symbol, false);
}

} // namespace plum
