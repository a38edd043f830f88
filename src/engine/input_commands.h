#pragma once

#include "engine/command_table.h"

namespace plum {

class Launcher;
class VariableStore;

// The namespaces `input` and `me`: what the user typed after the keyword, and hiding the launcher.
// `input.text` and `me.text_input` suspend the run and therefore belong to the run loop, which also lets
// through only the commands of `input` that begin with "enter".
class InputCommands final : public Handler
{
public:
    InputCommands(const ArgumentReader &reader, Launcher &launcher, VariableStore &variables)
        : m_reader(reader)
        , m_launcher(launcher)
        , m_variables(variables)
    {
    }

    void call(const QString &command, const QString &arguments) override;
    QList<CommandInfo> commands() const override;

private:
    void enter(const CommandCall &call);
    void enterPiece(const CommandCall &call);

    const ArgumentReader &m_reader;
    Launcher &m_launcher;
    VariableStore &m_variables;
};

} // namespace plum
