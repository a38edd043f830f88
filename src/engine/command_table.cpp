#include "engine/command_table.h"

#include <algorithm>

namespace plum {

std::span<const Field> CommandInfo::usedFields() const
{
    const auto end = std::ranges::find(fields, FieldKind::None, &Field::kind);
    return {fields.begin(), end};
}

} // namespace plum
