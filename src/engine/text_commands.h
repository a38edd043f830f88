#pragma once

#include "engine/command_table.h"

namespace plum {

class VariableStore;

// The namespace `text`. Its words are matched without regard to letter case.
class TextCommands final : public TableHandler<TextCommands>
{
public:
    TextCommands(const ArgumentReader &reader, VariableStore &variables)
        : TableHandler(reader, WordMatch::LowerCased)
        , m_variables(variables)
    {
    }

    static std::span<const Row> table();

private:
    void replace(const CommandCall &call);

    VariableStore &m_variables;
};

} // namespace plum
