#include "commands/window_commands.h"

#include "commands/fields.h"
#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/run_time_error.h"
#include "engine/text_functions.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QList<CommandInfo> choicesOf(std::span<const WindowCommands::Selector> selectors)
{
    QList<CommandInfo> choices;
    for (const WindowCommands::Selector &selector : selectors)
        choices += selector.info;
    return choices;
}

} // namespace

std::span<const WindowCommands::Row> WindowCommands::table()
{
    using enum FieldKind;
    using enum Effect;
    static const QList<CommandInfo> parts = choicesOf(getSelectors());
    static const QList<CommandInfo> changes = choicesOf(setSelectors());
    static const std::array rows{
        Row{{u"get", {{Field{u"what", Choice}.oneOf(parts), {u"window", Handle}, {u"variable", Variable}}},
                u"Stores a window's handle, or a part of the rectangle of a window with its frame.",
                Touches::Desktop, Editions::Both, {{SeeWindows}}},
            &WindowCommands::get},
        Row{{u"set", {{Field{u"what", Choice}.oneOf(changes), {u"window", Handle}, {u"to", Point}}},
                u"Changes a window.", Touches::Desktop, Editions::Both, {{ChangeWindows}}},
            &WindowCommands::set},
    };
    return rows;
}

std::span<const WindowCommands::Selector> WindowCommands::getSelectors()
{
    using enum FieldKind;
    using Commands = WindowCommands;
    static constexpr std::array rows{
        Selector{{u"active_window", {{{u"variable", Variable}}}, u"The window with the keyboard."},
            &Commands::getActive},
        Selector{{u"mouse_window", {{{u"variable", Variable}}}, u"The window under the pointer."},
            &Commands::getUnderMouse},
        Selector{
            {u"window_xy", {{{u"window", Handle}, {u"variable", Variable}}}, u"Its top left corner as x:y."},
            &Commands::getCorner},
        Selector{{u"window_left", {{{u"window", Handle}, {u"variable", Variable}}}, u"Its left edge."},
            &Commands::getLeft},
        Selector{{u"window_top", {{{u"window", Handle}, {u"variable", Variable}}}, u"Its top edge."},
            &Commands::getTop},
        Selector{
            {u"window_right", {{{u"window", Handle}, {u"variable", Variable}}}, u"The x just right of it."},
            &Commands::getRight},
        Selector{
            {u"window_bottom", {{{u"window", Handle}, {u"variable", Variable}}}, u"The y just below it."},
            &Commands::getBottom},
        Selector{{u"window_width", {{{u"window", Handle}, {u"variable", Variable}}}, u"Its width."},
            &Commands::getWidth},
        Selector{{u"window_height", {{{u"window", Handle}, {u"variable", Variable}}}, u"Its height."},
            &Commands::getHeight},
    };
    return rows;
}

std::span<const WindowCommands::Selector> WindowCommands::setSelectors()
{
    using enum FieldKind;
    using Commands = WindowCommands;
    static constexpr std::array rows{
        Selector{{u"close", {{{u"window", Handle}}}, u"Asks it to close."}, &Commands::close},
        Selector{
            {u"active_window", {{{u"window", Handle}}}, u"Brings it to the front."}, &Commands::activate},
        Selector{{u"hide_window", {{{u"window", Handle}}}, u"Hides it."}, &Commands::hide},
        Selector{{u"show_window", {{{u"window", Handle}}}, u"Shows it again."}, &Commands::show},
        Selector{{u"mix_window", {{{u"window", Handle}}}, u"Minimises it."}, &Commands::minimise},
        Selector{{u"max_window", {{{u"window", Handle}}}, u"Maximises it."}, &Commands::maximise},
        Selector{{u"move_window", {{{u"window", Handle}, {u"to", Point}}}, u"Moves its top left corner."},
            &Commands::move},
    };
    return rows;
}

void WindowCommands::get(const CommandCall &call)
{
    select(getSelectors(), call);
}

void WindowCommands::set(const CommandCall &call)
{
    select(setSelectors(), call);
}

void WindowCommands::select(std::span<const Selector> selectors, const CommandCall &call)
{
    QString word;
    resumeNext([&] { word = call.arg(0); });
    for (const Selector &selector : selectors) {
        if (selector.info.word == word) {
            (this->*selector.routine)(call);
            return;
        }
    }
}

WindowHandle WindowCommands::handleField(const CommandCall &call) const
{
    WindowHandle window = 0;
    resumeNext([&] { window = toInt32(call.arg(1)); });
    return window;
}

// The window that a change is for. Edition 1 does not ask whether it is still there.
WindowHandle WindowCommands::presentWindow(const CommandCall &call) const
{
    const WindowHandle window = handleField(call);
    if (call.edition() == Edition::Two && m_windows.rectangle(window).isNull()) {
        call.fail(Reason::tr("the window %1 is gone").arg(call.arg(1)));
        return 0;
    }
    return window;
}

void WindowCommands::storeHandle(const CommandCall &call, WindowHandle window)
{
    if (window == 0)
        call.fail(Reason::tr("there is no such window"));
    resumeNext([&] { call.setVariable(call.arg(1), QString::number(window)); });
}

void WindowCommands::storePart(const CommandCall &call, const std::function<QString(const QRect &)> &part)
{
    const QRect rectangle = m_windows.rectangle(handleField(call));
    if (rectangle.isNull())
        call.fail(Reason::tr("the window %1 is gone").arg(fieldOrEmpty(call, 1)));
    resumeNext([&] { call.setVariable(call.arg(2), part(rectangle)); });
}

void WindowCommands::getActive(const CommandCall &call)
{
    storeHandle(call, m_windows.foreground());
}

void WindowCommands::getUnderMouse(const CommandCall &call)
{
    storeHandle(call, m_windows.underPointer());
}

void WindowCommands::getCorner(const CommandCall &call)
{
    storePart(call, [](const QRect &r) { return u"%1:%2"_s.arg(r.x()).arg(r.y()); });
}

void WindowCommands::getLeft(const CommandCall &call)
{
    storePart(call, [](const QRect &r) { return QString::number(r.x()); });
}

void WindowCommands::getTop(const CommandCall &call)
{
    storePart(call, [](const QRect &r) { return QString::number(r.y()); });
}

void WindowCommands::getRight(const CommandCall &call)
{
    storePart(call, [](const QRect &r) { return QString::number(r.x() + r.width()); });
}

void WindowCommands::getBottom(const CommandCall &call)
{
    storePart(call, [](const QRect &r) { return QString::number(r.y() + r.height()); });
}

void WindowCommands::getWidth(const CommandCall &call)
{
    storePart(call, [](const QRect &r) { return QString::number(r.width()); });
}

void WindowCommands::getHeight(const CommandCall &call)
{
    storePart(call, [](const QRect &r) { return QString::number(r.height()); });
}

void WindowCommands::close(const CommandCall &call)
{
    m_windows.close(presentWindow(call));
}

void WindowCommands::activate(const CommandCall &call)
{
    m_windows.activate(presentWindow(call));
}

void WindowCommands::hide(const CommandCall &call)
{
    m_windows.hide(presentWindow(call));
}

void WindowCommands::show(const CommandCall &call)
{
    m_windows.show(presentWindow(call));
}

void WindowCommands::minimise(const CommandCall &call)
{
    m_windows.minimise(presentWindow(call));
}

void WindowCommands::maximise(const CommandCall &call)
{
    m_windows.maximise(presentWindow(call));
}

void WindowCommands::move(const CommandCall &call)
{
    QString to;
    resumeNext([&] { to = call.arg(2); });
    resumeNext([&] {
        const QPoint corner(toInt32(Piece(to, u":"_s, 0)), toInt32(Piece(to, u":"_s, 1)));
        m_windows.moveTo(presentWindow(call), corner);
    });
}

} // namespace plum
