#include "engine/set_command.h"

#include "engine/variable_store.h"

namespace plum {

void SetCommand::call(const QString &command, const QString &arguments)
{
    m_variables.SetVar(command, CommandCall(m_reader, command, arguments).whole());
}

QList<CommandInfo> SetCommand::commands() const
{
    // The empty word stands for any name.
    return {{{}, {{{u"value", FieldKind::Text}}}, u"Gives the variable named after the dot a value."}};
}

} // namespace plum
