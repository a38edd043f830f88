#pragma once

#include "commands/points.h"
#include "engine/command_table.h"

#include <span>

namespace plum {

class Clipboard;
class Launcher;
class MouseClicks;
class Pointer;

// What a command can do with the point that it has found: `mouse.after_offset` with the sum, the screen
// searches with the place of their hit. A word that names no action is the variable that receives the point.
class PointActions
{
public:
    struct Needs
    {
        Pointer &pointer;
        MouseClicks &clicks;
        Clipboard &clipboard;
        Launcher &launcher;
    };

    // Who acts. The two know different words, and the empty one means something else to each.
    enum User : unsigned {
        AfterOffset = 1,
        Search = 2,
    };

    struct Action
    {
        unsigned users; // bits of User
        QStringView word;
        void (PointActions::*routine)(const CommandCall &, ScriptPoint);
        QStringView summary;
        CommandEffects effects = {};
    };

    explicit PointActions(const Needs &needs)
        : m_use(needs)
    {
    }

    static std::span<const Action> table();

    // The words of one user, for its own table.
    static QList<CommandInfo> words(User user);

    void act(User user, const CommandCall &call, const QString &word, ScriptPoint point);

private:
    void doNothing(const CommandCall &, ScriptPoint);
    void moveTo(const CommandCall &, ScriptPoint point);
    void clickAt(const CommandCall &, ScriptPoint point);
    void doubleClickAt(const CommandCall &, ScriptPoint point);
    void rightClick(const CommandCall &, ScriptPoint);
    void showPoint(const CommandCall &, ScriptPoint point);
    void storePoint(const CommandCall &call, ScriptPoint point);
    void storeX(const CommandCall &call, ScriptPoint point);
    void storeY(const CommandCall &call, ScriptPoint point);
    void copyPoint(const CommandCall &, ScriptPoint point);

    Needs m_use;
};

} // namespace plum
