#include "values/json_commands.h"

#include "values/json_path.h"

namespace plum {

std::span<const JsonCommands::Row> JsonCommands::table()
{
    using enum FieldKind;
    static constexpr std::array rows{
        Row{{u"get", {{{u"text", Text}, {u"path", Text, u"the whole text"}, {u"variable", Variable}}},
                u"Stores what a path such as a.b[0] leads to in a JSON text; .length counts an array.",
                Touches::Nothing, Editions::Two},
            &JsonCommands::get},
    };
    return rows;
}

void JsonCommands::get(const CommandCall &call)
{
    const JsonFinding found = followJsonPath(call.arg(0), call.arg(1));
    if (found.value)
        call.setVariable(call.arg(2), *found.value);
    else
        call.fail(found.problem);
}

} // namespace plum
