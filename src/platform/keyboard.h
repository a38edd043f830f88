#pragma once

#include <QString>

#include <functional>

namespace plum {

class StopSignal;

// Synthetic key events, by virtual-key code as Windows numbers them (65 to 90 for the letters A to Z,
// 16 shift, 17 control, 18 alt, 91 the Windows or Super key, 13 enter, ...).
class Keyboard
{
public:
    // Bits of a key event, with the values of the Windows call `keybd_event`. Without KeyUp the key goes
    // down.
    enum KeyFlag : quint32 {
        ExtendedKey
        = 1, // the right-hand or keypad twin of a key; a system that has one code for both ignores it
        KeyUp = 2,
    };

    virtual ~Keyboard() = default;

    // Sends one event to whatever has the keyboard focus. Returns before the receiver has seen it; events
    // keep their order among themselves and with those of `Pointer`.
    // A letter means the letter, whatever the keyboard layout in force: where the layout lacks it, the
    // backend makes a key for it. Code 0, and a code that names no key, is sent where the system has such
    // an event and is nothing elsewhere.
    virtual void keyEvent(quint8 virtualKey, quint32 flags) = 0;

    // Types `text` key by key, whatever the keyboard layout in force and whether Caps Lock is on; the
    // clipboard is not touched. CR LF, a lone CR and a lone LF are the enter key, a tab is the tab key.
    // Characters that the layout lacks are typed all the same, as keyEvent() does it for letters. Returns
    // false, at the first character that cannot be typed, when there is one: another control character, or
    // half of a pair. Takes some time for each few dozen characters that need keys of their own, so hand over
    // some dozens at a time and let the receiver read in between. A backend that has no way to type texts
    // types nothing.
    bool typeText(QStringView text)
    {
        return typeText(text, [] {});
    }

    // The same, with a call before each character, when those before it have been sent and no key of theirs
    // is down. It may leave by an exception; what is left of the text is not typed then.
    using BeforeCharacter = std::function<void()>;
    virtual bool typeText(QStringView text, const BeforeCharacter &) { return text.isEmpty(); }

    // While it is raised no call waits for a receiver: a text or a key that would is left with RunStopped,
    // and releaseAll() waits for a moment at most. Null for none; it has to last until another one is set.
    virtual void setStop(const StopSignal *) { }

    // Lets go of every key that this object pressed and did not release, and gives back every change it
    // made to the keyboard's mapping.
    virtual void releaseAll() = 0;
};

} // namespace plum
