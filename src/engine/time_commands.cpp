#include "engine/time_commands.h"

#include "engine/conversions.h"
#include "engine/waiter.h"

#include <QDateTime>

namespace plum {

namespace {

constexpr QStringView usualFormat = u"yyyy-MM-dd HH:mm:ss";

} // namespace

std::span<const TimeCommands::Row> TimeCommands::table()
{
    static constexpr std::array rows{
        Row{{u"sleep", {{{u"duration", FieldKind::Milliseconds}}},
                u"Waits; in edition 1, 0 waits for 429.4967296 seconds, as it always has."},
            &TimeCommands::sleep},
        Row{{u"now", {{{u"variable", FieldKind::Variable}, {u"format", FieldKind::Text, usualFormat}}},
                u"Stores the local time as a format such as dd.MM.yyyy says, or with unix the seconds since "
                u"1970.",
                Touches::Nothing, Editions::Two},
            &TimeCommands::now},
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

void TimeCommands::now(const CommandCall &call)
{
    const QString format = call.arg(1);
    const QDateTime now = QDateTime::currentDateTime();
    if (format == u"unix")
        call.setVariable(
            call.arg(0), QString::number(static_cast<double>(now.toMSecsSinceEpoch()) / 1000, 'f', 3));
    else
        call.setVariable(call.arg(0), now.toString(format.isEmpty() ? usualFormat : QStringView(format)));
}

} // namespace plum
