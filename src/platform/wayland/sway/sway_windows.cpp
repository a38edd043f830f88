#include "platform/wayland/sway/sway_windows.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QThread>
#include <QWindow>

#include <algorithm>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString forgetMarks(const SwayWindow &window)
{
    QString commands;
    for (const QString &mark : window.marks) {
        if (PutAway::fromMark(mark))
            commands += u"unmark %1, "_s.arg(mark);
    }
    return commands;
}

} // namespace

std::optional<SwayWindow> SwayWindows::find(WindowHandle window)
{
    if (window <= 0)
        return {};
    const std::vector<SwayWindow> all = readSwayTree(m_socket);
    const auto found = std::ranges::find(all, window, &SwayWindow::handle);
    return found == all.end() ? std::nullopt : std::optional(*found);
}

void SwayWindows::run(WindowHandle window, const QString &commands)
{
    m_socket.run(u"[con_id=%1] %2"_s.arg(window).arg(commands).toUtf8());
}

// A floating window takes on the size that its program draws, and a program that has just left the full
// screen still draws an earlier one. It has half a second.
void SwayWindows::runUntilItIsSo(WindowHandle window, const QString &commands, const QRect &frame)
{
    constexpr int patience = 500; // milliseconds
    constexpr int lookAgain = 10;
    constexpr int enough = 3; // looks in a row, since a drawing may be on its way
    const QDeadlineTimer deadline(patience);
    run(window, commands);
    for (int settled = 0; settled < enough && !deadline.hasExpired(); QThread::msleep(lookAgain)) {
        const auto now = find(window);
        if (!now)
            return;
        if (now->frame != frame)
            run(window, commands);
        settled = now->frame == frame && now->isDrawn ? settled + 1 : 0;
    }
}

WindowHandle SwayWindows::foreground()
{
    const std::vector<SwayWindow> all = readSwayTree(m_socket);
    const auto found = std::ranges::find(all, true, &SwayWindow::isFocused);
    return found == all.end() ? 0 : found->handle;
}

WindowHandle SwayWindows::underPointer()
{
    const QPoint pointer = m_pointer();
    const std::vector<SwayWindow> all = readSwayTree(m_socket);
    const auto found = std::ranges::find_if(all, [&](const SwayWindow &window) {
        return window.isVisible && !window.isInScratchpad && window.frame.contains(pointer);
    });
    return found == all.end() ? 0 : found->handle;
}

WindowHandle SwayWindows::byTitle(const QString &title)
{
    const std::vector<SwayWindow> all = readSwayTree(m_socket);
    const auto found = std::ranges::find_if(
        all, [&](const SwayWindow &window) { return !window.isHidden() && window.title == title; });
    return found == all.end() ? 0 : found->handle;
}

QString SwayWindows::title(WindowHandle window)
{
    const auto found = find(window);
    return found ? found->title : QString();
}

// Sway knows windows by their process and title; of two that have both alike the upper one counts.
WindowHandle SwayWindows::own(quintptr id)
{
    const QWindowList ours = QGuiApplication::allWindows();
    const auto asked = std::ranges::find_if(
        ours, [&](const QWindow *window) { return window->handle() && window->winId() == id; });
    if (asked == ours.end())
        return 0;
    const std::vector<SwayWindow> all = readSwayTree(m_socket);
    const auto found = std::ranges::find_if(all, [&](const SwayWindow &window) {
        return window.process == getpid() && window.title == (*asked)->title();
    });
    return found == all.end() ? 0 : found->handle;
}

std::vector<WindowHandle> SwayWindows::stacking()
{
    std::vector<WindowHandle> handles;
    for (const SwayWindow &window : readSwayTree(m_socket)) {
        if (!window.isHidden())
            handles.push_back(window.handle);
    }
    return handles;
}

bool SwayWindows::isOnScreen(WindowHandle window)
{
    const auto found = find(window);
    return found && found->isOnCurrentWorkspace;
}

QRect SwayWindows::rectangle(WindowHandle window)
{
    const auto found = find(window);
    return found ? found->rectangle() : QRect();
}

void SwayWindows::close(WindowHandle window)
{
    if (find(window))
        run(window, u"kill"_s);
}

void SwayWindows::activate(WindowHandle window)
{
    const auto found = find(window);
    if (!found || found->isHidden())
        return;
    if (found->isInScratchpad)
        bringBack(*found);
    else
        run(window, u"focus"_s);
}

void SwayWindows::putAway(const SwayWindow &window, PutAway::Manner manner)
{
    PutAway note = window.putAway.value_or(PutAway{.rectangle = window.frame});
    if (!window.putAway) {
        note.before = window.isFullscreen ? PutAway::Before::Fullscreen
            : window.isFloating           ? PutAway::Before::Floating
                                          : PutAway::Before::Tiled;
    }
    note.manner = manner;
    const QString away = window.isInScratchpad ? QString() : u", move scratchpad"_s;
    run(window.handle, forgetMarks(window) + u"mark --add %1"_s.arg(note.mark(window.handle)) + away);
}

// Onto the workspace that the user sees, in front and with the keyboard.
void SwayWindows::bringBack(const SwayWindow &window)
{
    QString commands = forgetMarks(window) + u"focus"_s;
    if (window.putAway && window.putAway->before == PutAway::Before::Tiled)
        commands += u", floating disable"_s;
    else if (window.putAway && window.putAway->before == PutAway::Before::Fullscreen)
        commands += u", fullscreen enable"_s;
    run(window.handle, commands);
}

void SwayWindows::hide(WindowHandle window)
{
    if (const auto found = find(window); found && !found->isHidden())
        putAway(*found, PutAway::Manner::Hidden);
}

void SwayWindows::show(WindowHandle window)
{
    const auto found = find(window);
    if (!found || found->isMinimised())
        return;
    if (found->isHidden())
        bringBack(*found);
    else
        run(window, u"focus"_s);
}

void SwayWindows::minimise(WindowHandle window)
{
    if (const auto found = find(window); found && !found->isMinimised())
        putAway(*found, PutAway::Manner::Minimised);
}

void SwayWindows::maximise(WindowHandle window)
{
    const auto found = find(window);
    if (!found)
        return;
    if (found->isInScratchpad)
        bringBack(*found);
    run(window, u"fullscreen enable"_s);
}

void SwayWindows::moveTo(WindowHandle window, QPoint corner)
{
    const auto found = find(window);
    if (!found)
        return;
    const QSize size = found->rectangle().size();
    const bool wasFloating = found->putAway ? found->putAway->before == PutAway::Before::Floating
                                            : found->isFloating && !found->isFullscreen;
    QString commands;
    if (!wasFloating) {
        if (!found->isInScratchpad)
            commands = u"fullscreen disable, floating enable, "_s;
        commands += u"resize set width %1 px height %2 px, "_s.arg(size.width()).arg(size.height());
    }
    commands += u"move absolute position %1 %2"_s.arg(corner.x()).arg(corner.y());
    if (!found->isInScratchpad) {
        commands += u", focus"_s;
        if (wasFloating)
            run(window, commands);
        else
            runUntilItIsSo(window, commands, {corner, size});
        return;
    }
    run(window, commands);
    if (found->putAway) {
        const PutAway note{.manner = found->putAway->manner, .rectangle = {corner, size}};
        run(window, forgetMarks(*found) + u"mark --add %1"_s.arg(note.mark(window)));
    }
}

void SwayWindows::bringHere(WindowHandle window)
{
    const auto found = find(window);
    if (found && !found->isInScratchpad && !found->isOnCurrentWorkspace)
        run(window, u"move container to workspace current"_s);
}

// Sway has no such layer for windows.
void SwayWindows::setTopmost(WindowHandle)
{
}

} // namespace plum
