#pragma once

#include "engine/command_table.h"
#include "platform/desktop_windows.h"
#include "waits/patience.h"

#include <optional>

namespace plum {

class Paths;
class Screen;
class ScreenSearch;
class ScriptFolders;
struct Position;
struct RunState;
struct ScreenArea;

// The namespace `wait`: each command goes on as soon as something has happened, and fails when its time is
// over.
class WaitCommands final : public TableHandler<WaitCommands>
{
public:
    struct Needs
    {
        RunState &state;
        Paths &paths;
        const ScriptFolders &folders;
        Screen &screen;
        ScreenSearch &search;
        Windows &windows;
        Patience &patience;
    };

    explicit WaitCommands(const Needs &needs)
        : m_use(needs)
    {
    }

    static std::span<const Row> table();

private:
    void picture(const CommandCall &call);
    void colour(const CommandCall &call);
    void window(const CommandCall &call);
    void gone(const CommandCall &call);
    void file(const CommandCall &call);
    void change(const CommandCall &call);

    void place(const CommandCall &call, const QString &missing, const ScreenArea &area,
        const std::function<std::optional<Position>()> &search);
    bool waitUntil(const CommandCall &call, int timeField, const QString &missing,
        const std::function<bool()> &look, const Patience::Listen &listen = {}) const;

    Needs m_use;
};

} // namespace plum
