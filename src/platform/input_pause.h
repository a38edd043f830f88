#pragma once

namespace plum {

// Why the next key, click or motion of a run is kept back, and for how long.
struct InputPause
{
    enum class Reason {
        None,
        Hand, // the user is at work with mouse or keyboard
        OtherWindow, // the window that it is for is not in front
    };

    Reason reason = Reason::None;
    int milliseconds = 0; // until it goes on if the hand rests; 0 where that is not known
};

} // namespace plum
