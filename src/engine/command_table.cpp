#include "engine/command_table.h"

#include <algorithm>

namespace plum {

std::span<const Field> CommandInfo::usedFields() const
{
    const auto end = std::ranges::find(fields, FieldKind::None, &Field::kind);
    return {fields.begin(), end};
}

bool CommandInfo::onlyComputes() const
{
    const auto reachesOut = [](const CommandEffect &each) {
        return each.effect != Effect::Nothing && each.effect != Effect::Calculate;
    };
    const auto mayTakeTime = [](const Field &field) {
        return field.kind == FieldKind::Path || field.kind == FieldKind::Url
            || field.kind == FieldKind::Milliseconds;
    };
    return touches == Touches::Nothing && std::ranges::none_of(effects, reachesOut)
        && std::ranges::none_of(usedFields(), mayTakeTime);
}

} // namespace plum
