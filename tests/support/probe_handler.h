#pragma once

#include "engine/command_table.h"

#include <QStringList>

#include <functional>

namespace plum::recording {

// A namespace that keeps what the run loop hands it, "command|arguments", and may do something then.
class ProbeHandler final : public Handler
{
public:
    Next call(const CommandCall &call) override
    {
        calls += call.command() + u'|' + call.arguments();
        if (onCall)
            onCall();
        return next;
    }
    QList<CommandInfo> commands() const override { return {}; }

    QStringList calls;
    std::function<void()> onCall;
    Next next = Next::GoOn;
};

} // namespace plum::recording
