#pragma once

#include "commands/key_table.h"
#include "engine/command_table.h"

namespace plum {

class Clipboard;
class Keyboard;
class Waiter;

// The namespace `keyboard`.
class KeyboardCommands final : public TableHandler<KeyboardCommands>
{
public:
    KeyboardCommands(Keyboard &keyboard, Clipboard &clipboard, Waiter &waiter)
        : m_keyboard(keyboard)
        , m_clipboard(clipboard)
        , m_waiter(waiter)
    {
    }

    static std::span<const Row> table();

private:
    void hotkey(const CommandCall &call);
    void key(const CommandCall &call);
    void type(const CommandCall &call);
    void paste(const CommandCall &call);
    void ensend(const CommandCall &call);
    void keyDown(const CommandCall &call);
    void keyUp(const CommandCall &call);

    QList<NamedKey> keyList(const CommandCall &call) const;
    NamedKey keyOf(const CommandCall &call, const QString &name) const;
    void send(const NamedKey &key, quint32 flags);
    void pressTogether(const QList<NamedKey> &keys);

    Keyboard &m_keyboard;
    Clipboard &m_clipboard;
    Waiter &m_waiter;
};

// The text behind a scrambled one: characters 11 and 27 (counted from 1) are the key, which the low byte of
// every character from 31 on is XORed with. A key that is no number from 0 to 255 raises a run-time error.
QString unscramble(const QString &scrambled);

} // namespace plum
