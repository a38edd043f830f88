#include "commands/keyboard_commands.h"

#include "commands/key_names.h"
#include "engine/conversions.h"
#include "engine/waiter.h"
#include "platform/clipboard.h"
#include "platform/keyboard.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr double tapPause = 10;
constexpr double pastePause = 100;

} // namespace

std::span<const KeyboardCommands::Row> KeyboardCommands::table()
{
    using enum FieldKind;
    static constexpr std::array rows{
        Row{{u"hotkey", {{{u"keys", KeyList}}},
                u"Presses all keys in order and then releases them in the same order.", Touches::Desktop},
            &KeyboardCommands::hotkey},
        Row{{u"key", {{{u"keys", KeyList}}}, u"Presses and releases one key after the other.",
                Touches::Desktop},
            &KeyboardCommands::key},
        Row{{u"send", {{{u"text", Text}}},
                u"Types a text by pasting it; the clipboard's text is put back afterwards.",
                Touches::Desktop},
            &KeyboardCommands::send},
        Row{{u"ensend", {{{u"text", Text}}}, u"Reads a scrambled text and types nothing.", Touches::Desktop},
            &KeyboardCommands::ensend},
        Row{{u"key_down", {{{u"key", KeyName}}}, u"Presses a key.", Touches::Desktop},
            &KeyboardCommands::keyDown},
        Row{{u"key_up", {{{u"key", KeyName}}}, u"Releases a key.", Touches::Desktop},
            &KeyboardCommands::keyUp},
    };
    return rows;
}

quint8 KeyboardCommands::keyOf(const CommandCall &call, const QString &name) const
{
    const quint8 key = virtualKeyOf(name);
    if (key == 0)
        call.fail(u"there is no key called \"%1\""_s.arg(name));
    return key;
}

QList<quint8> KeyboardCommands::keyList(const CommandCall &call) const
{
    QList<quint8> keys;
    for (const QString &name : call.list())
        keys += keyOf(call, name);
    if (call.edition() == Edition::Two && call.hasFailed())
        keys.clear();
    return keys;
}

void KeyboardCommands::pressTogether(const QList<quint8> &keys)
{
    for (const quint8 key : keys)
        m_keyboard.keyEvent(key, 0);
    for (const quint8 key : keys)
        m_keyboard.keyEvent(key, Keyboard::KeyUp);
}

void KeyboardCommands::hotkey(const CommandCall &call)
{
    pressTogether(keyList(call));
}

void KeyboardCommands::key(const CommandCall &call)
{
    for (const quint8 key : keyList(call)) {
        m_keyboard.keyEvent(key, Keyboard::ExtendedKey);
        m_keyboard.keyEvent(key, Keyboard::KeyUp);
        m_waiter.Wait(tapPause);
    }
}

void KeyboardCommands::send(const CommandCall &call)
{
    const bool hadText = !m_clipboard.text().isEmpty();
    // Read once more: the text that is put back is the one from right before the paste.
    const QString saved = hadText ? m_clipboard.text() : QString();
    const QString text = call.arg(0, u":"_s);
    m_waiter.Wait(pastePause);
    m_clipboard.setText(text);
    m_waiter.Wait(pastePause);
    pressTogether({virtualKeyOf(u"ctrl"_s), virtualKeyOf(u"v"_s)});
    m_waiter.Wait(pastePause);
    if (hadText)
        m_clipboard.setText(saved);
    else
        m_clipboard.clear();
}

void KeyboardCommands::ensend(const CommandCall &call)
{
    // The result goes nowhere; a bad text still has to raise its error.
    unscramble(call.arg(0, u":"_s));
}

void KeyboardCommands::keyDown(const CommandCall &call)
{
    const quint8 key = keyOf(call, call.arg(0, u":"_s));
    if (call.edition() == Edition::One || !call.hasFailed())
        m_keyboard.keyEvent(key, 0);
}

void KeyboardCommands::keyUp(const CommandCall &call)
{
    const quint8 key = keyOf(call, call.arg(0, u":"_s));
    if (call.edition() == Edition::One || !call.hasFailed())
        m_keyboard.keyEvent(key, Keyboard::KeyUp);
}

QString unscramble(const QString &scrambled)
{
    const quint8 key = toByte(QString(scrambled.mid(10, 1) + scrambled.mid(26, 1)));
    QString text = scrambled.mid(30);
    for (QChar &character : text)
        character = QChar(static_cast<char16_t>(character.unicode() ^ key));
    return text;
}

} // namespace plum
