#pragma once

#include <QString>

#include <functional>

namespace plum {

// The one way to pause: every pause of a script goes through it, and the user interface goes on meanwhile.
class Waiter
{
public:
    virtual ~Waiter() = default;

    virtual void Wait(double milliseconds) = 0;

    // As above, for a text that should be a number. A text that is none raises a type mismatch (13).
    virtual void Wait(const QString &milliseconds) = 0;

    // Ends early when `isOver` holds. It is asked at once, and when the interface has had something to do.
    virtual void Wait(double milliseconds, const std::function<bool()> &isOver) = 0;
};

} // namespace plum
