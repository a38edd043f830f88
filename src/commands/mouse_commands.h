#pragma once

#include "commands/points.h"
#include "engine/command_table.h"

namespace plum {

class MouseClicks;
class PointActions;
class Pointer;
class Waiter;

// The namespace `mouse`.
class MouseCommands final : public TableHandler<MouseCommands>
{
public:
    struct Needs
    {
        Pointer &pointer;
        MouseClicks &clicks;
        PointActions &actions;
        Waiter &waiter;
    };

    explicit MouseCommands(const Needs &needs)
        : m_use(needs)
    {
    }

    static std::span<const Row> table();

private:
    void click(const CommandCall &call);
    void doubleClick(const CommandCall &call);
    void move(const CommandCall &call);
    void rightClick(const CommandCall &call);
    void getPosition(const CommandCall &call);
    void clickRepeatedly(const CommandCall &call);
    void getX(const CommandCall &call);
    void getY(const CommandCall &call);
    void offset(const CommandCall &call);
    void afterOffset(const CommandCall &call);
    void drag(const CommandCall &call);
    void dragBy(const CommandCall &call);
    void leftDown(const CommandCall &call);
    void leftUp(const CommandCall &call);
    void rightDown(const CommandCall &call);
    void rightUp(const CommandCall &call);

    void dragFromTo(ScriptPoint from, ScriptPoint to);
    QString positionText() const;

    Needs m_use;
};

} // namespace plum
