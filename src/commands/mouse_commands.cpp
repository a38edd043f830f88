#include "commands/mouse_commands.h"

#include "commands/mouse_clicks.h"
#include "commands/point_actions.h"
#include "engine/conversions.h"
#include "engine/text_functions.h"
#include "engine/waiter.h"
#include "platform/pointer.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr double dragPause = 200;

constexpr std::array clickWords{
    CommandInfo{u"click", {}, u"Clicks."},
    CommandInfo{u"d_click", {}, u"Double-clicks."},
};

} // namespace

std::span<const MouseCommands::Row> MouseCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static const QList<CommandInfo> actionWords = PointActions::words(PointActions::AfterOffset);
    static const std::array rows{
        Row{{u"click", {}, u"Clicks the left button.", Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::click},
        Row{{u"d_click", {}, u"Double-clicks the left button.", Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::doubleClick},
        Row{{u"move", {{{u"to", Point}}}, u"Moves the pointer; does nothing without a point.",
                Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::move},
        Row{{u"r_click", {}, u"Clicks the right button.", Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::rightClick},
        Row{{u"get_xy", {{{u"variable", Variable}}}, u"Stores the pointer's position as x:y.",
                Touches::Desktop, Editions::Both, {{SeePointer}}},
            &MouseCommands::getPosition},
        Row{{u"while_click",
                {{{u"count", Number, u"without end"}, Field{u"kind", Choice}.oneOf(clickWords),
                    {u"interval", Milliseconds}}},
                u"Clicks (kind click) or double-clicks (kind d_click) count times, with a pause after each.",
                Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::clickRepeatedly},
        Row{{u"get_x", {{{u"variable", Variable}}}, u"Stores the pointer's x.", Touches::Desktop,
                Editions::Both, {{SeePointer}}},
            &MouseCommands::getX},
        Row{{u"get_y", {{{u"variable", Variable}}}, u"Stores the pointer's y.", Touches::Desktop,
                Editions::Both, {{SeePointer}}},
            &MouseCommands::getY},
        Row{{u"offset", {{{u"by", Offset}}}, u"Moves the pointer by an offset; does nothing without one.",
                Touches::Desktop, Editions::Both, {{SeePointer}, {Mouse}}},
            &MouseCommands::offset},
        Row{{u"after_offset",
                {{{u"from", Point}, {u"by", Offset},
                    Field{u"action", Choice, u"move"}.oneOfOrVariable(actionWords)}},
                u"Adds the offset to the point and then does the action there: move, click, d_click, tips, "
                u"or "
                u"r_click where the pointer is; any other word is the variable that receives the point.",
                Touches::Desktop, Editions::Both, {{Nothing}}},
            &MouseCommands::afterOffset},
        Row{{u"drag", {{{u"from", Point}, {u"to", Point}}},
                u"Drags with the left button from one point to another.", Touches::Desktop, Editions::Both,
                {{Mouse}}},
            &MouseCommands::drag},
        Row{{u"drag_to", {{{u"from", Point}, {u"by", Offset}}},
                u"Drags with the left button from a point by an offset.", Touches::Desktop, Editions::Both,
                {{Mouse}}},
            &MouseCommands::dragBy},
        Row{{u"l_down", {}, u"Presses the left button.", Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::leftDown},
        Row{{u"l_up", {}, u"Releases the left button.", Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::leftUp},
        Row{{u"r_down", {}, u"Presses the right button.", Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::rightDown},
        Row{{u"r_up", {}, u"Releases the right button.", Touches::Desktop, Editions::Both, {{Mouse}}},
            &MouseCommands::rightUp},
    };
    return rows;
}

void MouseCommands::click(const CommandCall &)
{
    m_use.clicks.leftClick();
}

void MouseCommands::doubleClick(const CommandCall &)
{
    m_use.clicks.doubleClick();
}

void MouseCommands::rightClick(const CommandCall &)
{
    m_use.clicks.rightClick();
}

void MouseCommands::move(const CommandCall &call)
{
    const QString to = call.arg(0);
    if (!to.isEmpty())
        m_use.pointer.moveTo(ScriptPoint::fromText(to).toPoint());
}

QString MouseCommands::positionText() const
{
    const QPoint at = m_use.pointer.position();
    return u"%1:%2"_s.arg(at.x()).arg(at.y());
}

void MouseCommands::getPosition(const CommandCall &call)
{
    call.setVariable(call.arg(0), positionText());
}

void MouseCommands::getX(const CommandCall &call)
{
    call.setVariable(call.arg(0), Piece(positionText(), u":"_s, 0));
}

void MouseCommands::getY(const CommandCall &call)
{
    call.setVariable(call.arg(0), Piece(positionText(), u":"_s, 1));
}

void MouseCommands::clickRepeatedly(const CommandCall &call)
{
    const QString countText = call.arg(0);
    const QString kind = call.arg(1);
    const QString interval = call.arg(2);
    const bool endless = countText.isEmpty();
    const int count = endless ? 0 : toInt16(countText);
    for (int repetition = 1; endless || repetition <= count; ++repetition) {
        if (kind == "click"_L1)
            m_use.clicks.leftClick();
        else if (kind == "d_click"_L1)
            m_use.clicks.doubleClick();
        m_use.waiter.Wait(interval);
        if (endless)
            repetition = 0;
    }
}

void MouseCommands::offset(const CommandCall &call)
{
    const QString by = call.arg(0);
    if (by.isEmpty())
        return;
    const ScriptPoint distance = ScriptPoint::fromText(by);
    const QPoint at = m_use.pointer.position();
    const ScriptPoint from{toInt16(static_cast<double>(at.x())), toInt16(static_cast<double>(at.y()))};
    m_use.pointer.moveTo((from + distance).toPoint());
}

void MouseCommands::afterOffset(const CommandCall &call)
{
    const QString from = call.arg(0);
    const QString by = call.arg(1);
    const QString action = call.arg(2);
    const ScriptPoint target = ScriptPoint::fromText(from) + ScriptPoint::fromText(by);
    m_use.actions.act(PointActions::AfterOffset, call, action, target);
}

void MouseCommands::drag(const CommandCall &call)
{
    const ScriptPoint from = ScriptPoint::fromText(call.arg(0));
    dragFromTo(from, ScriptPoint::fromText(call.arg(1)));
}

void MouseCommands::dragBy(const CommandCall &call)
{
    const ScriptPoint from = ScriptPoint::fromText(call.arg(0));
    dragFromTo(from, from + ScriptPoint::fromText(call.arg(1)));
}

void MouseCommands::dragFromTo(ScriptPoint from, ScriptPoint to)
{
    m_use.pointer.moveTo(from.toPoint());
    m_use.waiter.Wait(dragPause);
    m_use.pointer.buttonEvent(Pointer::LeftDown);
    m_use.waiter.Wait(dragPause);
    m_use.pointer.moveTo(to.toPoint());
    m_use.waiter.Wait(dragPause);
    m_use.pointer.buttonEvent(Pointer::LeftUp);
}

void MouseCommands::leftDown(const CommandCall &)
{
    m_use.pointer.buttonEvent(Pointer::LeftDown);
}

void MouseCommands::leftUp(const CommandCall &)
{
    m_use.pointer.buttonEvent(Pointer::LeftUp);
}

void MouseCommands::rightDown(const CommandCall &)
{
    m_use.pointer.buttonEvent(Pointer::RightDown);
}

void MouseCommands::rightUp(const CommandCall &)
{
    m_use.pointer.buttonEvent(Pointer::RightUp);
}

} // namespace plum
