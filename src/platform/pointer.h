#pragma once

#include <QPoint>

namespace plum {

// The mouse pointer of the session: where it is, and synthetic button events.
// Coordinates are physical pixels of the whole desktop; the origin is the top left corner of the main screen.
class Pointer
{
public:
    // Bits of a button event, with the values of the Windows call `mouse_event`. Bits may be combined;
    // the events of one call happen in the order of this list.
    enum ButtonFlag : quint32 {
        LeftDown = 2,
        LeftUp = 4,
        RightDown = 8,
        RightUp = 16,
    };

    virtual ~Pointer() = default;

    // The current position. Without a desktop: 0,0.
    virtual QPoint position() = 0;

    // Whether no program notices that the position was asked for.
    virtual bool isAskedUnseen() const { return true; }

    // Moves the pointer. A point off the desktop is clipped to it by the system, without an error. While a
    // button of this object is down the pointer may pass points on the way, so that programs see a drag.
    virtual void moveTo(QPoint point) = 0;

    // Sends one event at the current position. Returns before the receiver has seen it; events keep
    // their order among themselves and with those of `Keyboard`. Unknown bits are ignored.
    virtual void buttonEvent(quint32 flags) = 0;

    // Lets go of every button that this object pressed and did not release.
    virtual void releaseAll() = 0;
};

} // namespace plum
