#pragma once

#include <QString>

namespace plum {

// The one way to pause: every pause of a script goes through it, and the user interface goes on meanwhile.
class Waiter
{
public:
    virtual ~Waiter() = default;

    virtual void Wait(double milliseconds) = 0;

    // As above, for a text that should be a number. A text that is none raises a type mismatch (13).
    virtual void Wait(const QString &milliseconds) = 0;
};

} // namespace plum
