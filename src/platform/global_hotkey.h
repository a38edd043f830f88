#pragma once

#include "platform/desktop_windows.h"

#include <QObject>

namespace plum {

// One key combination that reaches this program wherever the keyboard focus is. What is typed after it is
// kept back until whoever listens to `fired` has said, before it returns, where it should go; where the
// system cannot keep keys back, it goes where it always goes.
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

    // What was typed is for `window`, a window of this program, and goes there when that window or another
    // one of this program has the keyboard; after two seconds it goes to whichever window has it.
    virtual void giveKeysTo(WindowHandle window) = 0;

    // What was typed is for the window that gets the keyboard after `window`; it waits for a third of a
    // second at most.
    virtual void takeKeysFrom(WindowHandle window) = 0;

    // The time of the system's clock that stamps presses, in milliseconds; it runs over, so that only the
    // difference of two times means something.
    virtual quint32 now() = 0;

Q_SIGNALS:
    // `time` is that of the press, which may have waited until the program was ready for it.
    void fired(quint32 time);
};

} // namespace plum
