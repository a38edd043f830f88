#pragma once

#include "engine/command_table.h"

#include <QStringList>

#include <functional>

namespace plum::recording {

// A namespace that keeps what the run loop hands it, "command|arguments", and may do something then.
class ProbeHandler final : public Handler
{
public:
    void call(const QString &command, const QString &arguments) override
    {
        calls += command + u'|' + arguments;
        if (onCall)
            onCall();
    }
    QList<CommandInfo> commands() const override { return {}; }

    QStringList calls;
    std::function<void()> onCall;
};

} // namespace plum::recording
