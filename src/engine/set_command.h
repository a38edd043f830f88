#pragma once

#include "engine/command_table.h"

namespace plum {

// The namespace `set`: every command word is the name of a variable.
class SetCommand final : public Handler
{
public:
    Next call(const CommandCall &call) override;
    QList<CommandInfo> commands() const override;
};

} // namespace plum
