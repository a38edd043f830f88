#pragma once

#include "desktop/stop/nested_desktop.h"
#include "desktop/stop/script_events.h"

namespace plum {

// A nested desktop on which every event of a script is written down.
class WatchedDesktop : public NestedDesktop
{
protected:
    void SetUp() override
    {
        NestedDesktop::SetUp();
        if (!HasFatalFailure())
            scriptEvents.emplace(innerDisplay());
    }

    void TearDown() override
    {
        scriptEvents.reset();
        NestedDesktop::TearDown();
    }

    std::optional<ScriptEvents> scriptEvents;
};

} // namespace plum
