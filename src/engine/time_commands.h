#pragma once

#include "engine/command_table.h"

namespace plum {

class Waiter;

// The namespace `time`.
class TimeCommands final : public TableHandler<TimeCommands>
{
public:
    explicit TimeCommands(Waiter &waiter)
        : m_waiter(waiter)
    {
    }

    static std::span<const Row> table();

private:
    void sleep(const CommandCall &call);
    void now(const CommandCall &call);

    Waiter &m_waiter;
};

} // namespace plum
