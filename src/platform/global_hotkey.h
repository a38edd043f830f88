#pragma once

#include <QObject>

namespace plum {

// One key combination that reaches this program wherever the keyboard focus is.
class GlobalHotkey : public QObject
{
    Q_OBJECT

public:
    // Bits with the values of the Windows call `RegisterHotKey`. 0 is the bare key.
    enum Modifier : quint32 {
        Alt = 1,
        Control = 2,
        Shift = 4,
    };

    // Registers the combination in place of any earlier one. `virtualKey` is 65 to 90, A to Z.
    // Returns false when another program holds the combination or there is no desktop; nothing is
    // registered then.
    virtual bool registerHotkey(quint32 modifiers, quint32 virtualKey) = 0;

    // Safe when nothing is registered.
    virtual void unregisterHotkey() = 0;

Q_SIGNALS:
    void fired();
};

} // namespace plum
