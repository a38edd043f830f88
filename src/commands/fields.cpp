#include "commands/fields.h"

#include "engine/command_table.h"
#include "engine/run_time_error.h"

namespace plum {

namespace {

// Mirrors how the argument reader tells a text in quotes, commas and all, from a list of fields.
bool isSingleField(const QString &arguments)
{
    const bool isOneQuotedText
        = arguments.startsWith(u'"') && arguments.endsWith(u'"') && arguments.count(u'"') == 2;
    return isOneQuotedText || !arguments.contains(u',');
}

} // namespace

QString fieldOrEmpty(const CommandCall &call, int index)
{
    QString field;
    resumeNext([&] { field = call.arg(index); });
    return field;
}

QString writtenField(const CommandCall &call, int index)
{
    return call.edition() == Edition::One && index > 0 && isSingleField(call.arguments())
        ? QString()
        : fieldOrEmpty(call, index);
}

} // namespace plum
