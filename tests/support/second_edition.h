#pragma once

#include "engine/command_table.h"
#include "support/script_bench.h"

#include <optional>

namespace plum::recording {

// Carries out one command as edition 2 does, its fields being values already. `single` has a value for each
// field of the row, also for the one that repeats, whose values are in `repeated`. Returns why the step
// failed, if it did.
inline std::optional<QString> failureOf(
    ScriptBench &bench, const QString &head, const QStringList &single, const QStringList &repeated = {})
{
    const QString command = head.section(u'.', 1);
    const FieldValues values{single, repeated};
    const CommandCall call(command, values, bench.state.vardict);
    bench.handler(head.section(u'.', 0, 0)).call(call);
    return call.hasFailed() ? std::optional(call.failure()) : std::nullopt;
}

} // namespace plum::recording
