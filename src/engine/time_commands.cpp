#include "engine/time_commands.h"

#include "engine/waiter.h"

namespace plum {

std::span<const TimeCommands::Row> TimeCommands::table()
{
    static constexpr std::array rows{
        Row{{u"sleep", {{{u"duration", FieldKind::Milliseconds}}},
                u"Waits; 0 waits for 429.4967296 seconds, as it always has."},
            &TimeCommands::sleep},
    };
    return rows;
}

void TimeCommands::sleep(const CommandCall &call)
{
    m_waiter.Wait(call.arg(0, QStringLiteral(":")));
}

} // namespace plum
