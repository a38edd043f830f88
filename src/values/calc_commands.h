#pragma once

#include "engine/command_table.h"

namespace plum {

// The namespace `calc`.
class CalcCommands final : public TableHandler<CalcCommands>
{
public:
    explicit CalcCommands(const ArgumentReader &reader)
        : m_reader(reader)
    {
    }

    static std::span<const Row> table();

private:
    void set(const CommandCall &call);

    const ArgumentReader &m_reader; // for what is no variable, such as me.enter_input
};

} // namespace plum
