#pragma once

#include "engine/command_table.h"

namespace plum {

class VariableStore;

// The namespace `set`: every command word is the name of a variable.
class SetCommand final : public Handler
{
public:
    SetCommand(const ArgumentReader &reader, VariableStore &variables)
        : m_reader(reader)
        , m_variables(variables)
    {
    }

    void call(const QString &command, const QString &arguments) override;
    QList<CommandInfo> commands() const override;

private:
    const ArgumentReader &m_reader;
    VariableStore &m_variables;
};

} // namespace plum
