#include "engine/time_commands.h"

#include "engine/conversions.h"
#include "engine/waiter.h"

namespace plum {

std::span<const TimeCommands::Row> TimeCommands::table()
{
    static constexpr std::array rows{
        Row{{u"sleep", {{{u"duration", FieldKind::Milliseconds}}},
                u"Waits; in edition 1, 0 waits for 429.4967296 seconds, as it always has."},
            &TimeCommands::sleep},
    };
    return rows;
}

void TimeCommands::sleep(const CommandCall &call)
{
    const QString duration = call.arg(0, QStringLiteral(":"));
    if (call.edition() == Edition::Two && toDouble(duration) == 0)
        return;
    m_waiter.Wait(duration);
}

} // namespace plum
