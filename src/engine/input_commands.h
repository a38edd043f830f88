#pragma once

#include "engine/command_table.h"

namespace plum {

class Launcher;

// The namespaces `input` and `me`: what the user typed after the keyword, the question in the input box, and
// hiding the launcher. Each has its own words for them.
class InputCommands final : public Handler
{
public:
    enum class Namespace {
        Input,
        Me,
    };

    InputCommands(Namespace nameSpace, Launcher &launcher)
        : m_namespace(nameSpace)
        , m_launcher(launcher)
    {
    }

    Next call(const CommandCall &call) override;
    QList<CommandInfo> commands() const override;

private:
    struct Row
    {
        CommandInfo info;
        Routine<InputCommands> routine;
    };
    std::span<const Row> table() const;

    Next ask(const CommandCall &call);
    void enter(const CommandCall &call);
    void enterPiece(const CommandCall &call);
    void hide(const CommandCall &call);

    Namespace m_namespace;
    Launcher &m_launcher;
};

} // namespace plum
