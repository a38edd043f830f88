#include "commands/point_actions.h"

#include "commands/mouse_clicks.h"
#include "engine/launcher.h"
#include "platform/clipboard.h"
#include "platform/pointer.h"

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView pointVariable = u"tarnwick_xy";

} // namespace

std::span<const PointActions::Action> PointActions::table()
{
    using Actions = PointActions;
    constexpr unsigned both = AfterOffset | Search;
    static constexpr std::array rows{
        Action{AfterOffset, u"", &Actions::moveTo, u"Moves there.", {{Effect::Mouse}}},
        Action{Search, u"", &Actions::doNothing, u"Does nothing."},
        Action{both, u"move", &Actions::moveTo, u"Moves there.", {{Effect::Mouse}}},
        Action{both, u"click", &Actions::clickAt, u"Moves there and clicks.", {{Effect::Mouse}}},
        Action{
            both, u"d_click", &Actions::doubleClickAt, u"Moves there and double-clicks.", {{Effect::Mouse}}},
        Action{
            both, u"r_click", &Actions::rightClick, u"Right-clicks where the pointer is.", {{Effect::Mouse}}},
        Action{AfterOffset, u"tips", &Actions::showPoint, u"Shows the point in a message."},
        Action{Search, u"get_xy", &Actions::storePoint, u"Stores the point in tarnwick_xy."},
        Action{Search, u"get_x", &Actions::storeX, u"Stores its x in tarnwick_xy."},
        Action{Search, u"get_y", &Actions::storeY, u"Stores its y in tarnwick_xy."},
        Action{Search, u"set_clipboard", &Actions::copyPoint, u"Puts the point on the clipboard.",
            {{Effect::SetClipboard}}},
    };
    return rows;
}

QList<CommandInfo> PointActions::words(User user)
{
    QList<CommandInfo> words;
    for (const Action &action : table()) {
        if ((action.users & user) != 0 && !action.word.isEmpty())
            words += {action.word, {}, action.summary, Touches::Nothing, Editions::Both, action.effects};
    }
    return words;
}

void PointActions::act(User user, const CommandCall &call, const QString &word, ScriptPoint point)
{
    const auto known = std::ranges::find_if(
        table(), [&](const Action &action) { return (action.users & user) != 0 && action.word == word; });
    if (known != table().end())
        (this->*known->routine)(call, point);
    else
        call.setVariable(word, point.toText());
}

void PointActions::doNothing(const CommandCall &, ScriptPoint)
{
}

void PointActions::moveTo(const CommandCall &, ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
}

void PointActions::clickAt(const CommandCall &, ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
    m_use.clicks.leftClick();
}

void PointActions::doubleClickAt(const CommandCall &, ScriptPoint point)
{
    m_use.pointer.moveTo(point.toPoint());
    m_use.clicks.doubleClick();
}

// Kept: the right click stays where the pointer is.
void PointActions::rightClick(const CommandCall &, ScriptPoint)
{
    m_use.clicks.rightClick();
}

void PointActions::showPoint(const CommandCall &, ScriptPoint point)
{
    m_use.launcher.showMessage({.text = point.toText(), .systemModal = true});
}

void PointActions::storePoint(const CommandCall &call, ScriptPoint point)
{
    call.setVariable(pointVariable.toString(), point.toText());
}

void PointActions::storeX(const CommandCall &call, ScriptPoint point)
{
    call.setVariable(pointVariable.toString(), QString::number(point.x));
}

void PointActions::storeY(const CommandCall &call, ScriptPoint point)
{
    call.setVariable(pointVariable.toString(), QString::number(point.y));
}

void PointActions::copyPoint(const CommandCall &, ScriptPoint point)
{
    m_use.clipboard.clear();
    m_use.clipboard.setText(point.toText());
}

} // namespace plum
