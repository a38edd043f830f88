#pragma once

namespace plum {

// Whether this program's launcher starts when its user logs in. The system keeps it, so that its own settings
// show the same.
class Autostart
{
public:
    virtual ~Autostart() = default;

    virtual bool isOn() const = 0;

    // Returns whether it is so now. What another program folder has there is replaced, and never taken out.
    virtual bool setOn(bool isOn) = 0;
};

} // namespace plum
