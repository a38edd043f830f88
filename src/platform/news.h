#pragma once

namespace plum {

// Tells that something which is waited for may have happened, so that nobody need look for it again and
// again. It listens as long as it lives, and wakes the event loop.
class News
{
public:
    virtual ~News() = default;

    // Whether there has been any since this was asked last; so there is the first time, for what happened
    // before anybody listened.
    virtual bool arrived() = 0;
};

} // namespace plum
