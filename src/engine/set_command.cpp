#include "engine/set_command.h"

namespace plum {

Next SetCommand::call(const CommandCall &call)
{
    call.setVariable(call.command(), call.whole());
    return Next::GoOn;
}

QList<CommandInfo> SetCommand::commands() const
{
    // The empty word stands for any name.
    return {{{}, {{{u"value", FieldKind::Text}}}, u"Gives the variable named after the dot a value."}};
}

} // namespace plum
