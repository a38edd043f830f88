#pragma once

#include "engine/command_table.h"

namespace plum {

// The namespace `json`.
class JsonCommands final : public TableHandler<JsonCommands>
{
public:
    static std::span<const Row> table();

private:
    void get(const CommandCall &call);
};

} // namespace plum
