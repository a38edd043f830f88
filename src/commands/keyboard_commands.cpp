#include "commands/keyboard_commands.h"

#include "commands/key_names.h"
#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/waiter.h"
#include "platform/clipboard.h"
#include "platform/keyboard.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr double tapPause = 10;
constexpr double pastePause = 100;
constexpr double latestPaste = 500; // after that pause, for a receiver that takes its time
constexpr double typePause = 10;
constexpr qsizetype typedAtOnce = 32; // characters

// The names that a script of edition 2 may write.
std::span<const CommandInfo> keyWords()
{
    static const QStringList names = keyNames();
    static const QList<CommandInfo> words = [] {
        QList<CommandInfo> all;
        for (const QString &name : names)
            all += {name, {}, u"A key.", Touches::Nothing, Editions::Two};
        return all;
    }();
    return words;
}

} // namespace

std::span<const KeyboardCommands::Row> KeyboardCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static const Field keys = Field{u"keys", KeyList}.oneOf(keyWords());
    static const Field key = Field{u"key", KeyName}.oneOf(keyWords());
    static const std::array rows{
        Row{{u"hotkey", {{keys}}, u"Presses all keys in order and then releases them in the same order.",
                Touches::Desktop, Editions::Both, {{Keys}}},
            &KeyboardCommands::hotkey},
        Row{{u"key", {{keys}}, u"Presses and releases one key after the other.", Touches::Desktop,
                Editions::Both, {{Keys}}},
            &KeyboardCommands::key},
        Row{{u"send", {{{u"text", Text}}},
                u"Types a text by pasting it; the clipboard's text is put back afterwards.", Touches::Desktop,
                Editions::Both, {{Paste, 0, ObjectForm::AsWritten}}},
            &KeyboardCommands::paste},
        Row{{u"ensend", {{{u"text", Text}}}, u"Reads a scrambled text and types nothing.", Touches::Desktop,
                Editions::Both, {{Nothing}}},
            &KeyboardCommands::ensend},
        Row{{u"type", {{{u"text", Text}}},
                u"Types a text key by key, in any keyboard layout; the clipboard stays as it is.",
                Touches::Desktop, Editions::Two, {{Keys}}},
            &KeyboardCommands::type},
        Row{{u"key_down", {{key}}, u"Presses a key.", Touches::Desktop, Editions::Both, {{Keys}}},
            &KeyboardCommands::keyDown},
        Row{{u"key_up", {{key}}, u"Releases a key.", Touches::Desktop, Editions::Both, {{Keys}}},
            &KeyboardCommands::keyUp},
    };
    return rows;
}

// Edition 1 sends code 0 for a name that it does not know.
NamedKey KeyboardCommands::keyOf(const CommandCall &call, const QString &name) const
{
    if (call.edition() == Edition::One)
        return {name, virtualKeyOf(name)};
    const std::optional<NamedKey> key = keyNamed(name);
    if (!key)
        call.fail(Reason::tr("there is no key called \"%1\"").arg(name));
    return key.value_or(NamedKey{});
}

QList<NamedKey> KeyboardCommands::keyList(const CommandCall &call) const
{
    QList<NamedKey> keys;
    for (const QString &name : call.list())
        keys += keyOf(call, name);
    if (call.edition() == Edition::Two && call.hasFailed())
        keys.clear();
    return keys;
}

void KeyboardCommands::send(const NamedKey &key, quint32 flags)
{
    m_keyboard.keyEvent(key.virtualKey, flags | (key.isExtended ? Keyboard::ExtendedKey : 0U));
}

void KeyboardCommands::pressTogether(const QList<NamedKey> &keys)
{
    for (const NamedKey &key : keys)
        send(key, 0);
    for (const NamedKey &key : keys)
        send(key, Keyboard::KeyUp);
}

void KeyboardCommands::hotkey(const CommandCall &call)
{
    pressTogether(keyList(call));
}

void KeyboardCommands::key(const CommandCall &call)
{
    for (const NamedKey &key : keyList(call)) {
        // Kept: a tap presses the twin of whatever key it is. The keys of the number pad would be others
        // then.
        send(key, key.isOfNumberPad() ? 0U : Keyboard::ExtendedKey);
        send(key, Keyboard::KeyUp);
        m_waiter.Wait(tapPause);
    }
}

// A piece at a time, with a pause for the receiver and the user interface behind each.
void KeyboardCommands::type(const CommandCall &call)
{
    const QString text = call.arg(0);
    for (qsizetype from = 0; from < text.size();) {
        qsizetype end = std::min(from + typedAtOnce, text.size());
        // A pair, or the two characters of a line end, stay together.
        if (end < text.size() && (text[end].isLowSurrogate() || text[end] == u'\n'))
            ++end;
        if (!m_keyboard.typeText(QStringView(text).sliced(from, end - from))) {
            call.fail(Reason::tr("the text holds a character that no key types"));
            return;
        }
        m_waiter.Wait(typePause);
        from = end;
    }
}

void KeyboardCommands::paste(const CommandCall &call)
{
    const bool hadText = !m_clipboard.text().isEmpty();
    // Read once more: the text that is put back is the one from right before the paste.
    const QString saved = hadText ? m_clipboard.text() : QString();
    const QString text = call.arg(0, u":"_s);
    m_waiter.Wait(pastePause);
    m_clipboard.setText(text);
    m_waiter.Wait(pastePause);
    // Not from when the text was set: those who watch the clipboard have taken it by now.
    const std::optional<quint64> timesTaken = m_clipboard.timesTaken();
    pressTogether({{u"ctrl", virtualKeyOf(u"ctrl"_s)}, {u"v", virtualKeyOf(u"v"_s)}});
    m_waiter.Wait(pastePause);
    // Whoever comes to the keys later would get the old text.
    const auto isTaken = [&] { return m_clipboard.timesTaken() != timesTaken; };
    if (timesTaken && !isTaken())
        m_waiter.Wait(latestPaste, isTaken);
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
    const QString name = call.arg(0, u":"_s);
    const NamedKey key = keyOf(call, name);
    if (call.edition() == Edition::One || !call.hasFailed())
        send(key, 0);
}

void KeyboardCommands::keyUp(const CommandCall &call)
{
    const QString name = call.arg(0, u":"_s);
    const NamedKey key = keyOf(call, name);
    if (call.edition() == Edition::One || !call.hasFailed())
        send(key, Keyboard::KeyUp);
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
