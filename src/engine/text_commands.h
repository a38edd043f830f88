#pragma once

#include "engine/command_table.h"

namespace plum {

// The namespace `text`. Its words are matched without regard to letter case.
class TextCommands final : public TableHandler<TextCommands>
{
public:
    TextCommands()
        : TableHandler(WordMatch::LowerCased)
    {
    }

    static std::span<const Row> table();

private:
    void replace(const CommandCall &call);
    void splitInto(const CommandCall &call);
    void piece(const CommandCall &call);
    void find(const CommandCall &call);
    void trim(const CommandCall &call);
    void upper(const CommandCall &call);
    void lower(const CommandCall &call);
    void match(const CommandCall &call);
};

} // namespace plum
