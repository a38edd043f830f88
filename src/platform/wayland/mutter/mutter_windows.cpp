#include "platform/wayland/mutter/mutter_windows.h"

#include "platform/wayland/mutter/remote_session.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QThread>
#include <QWindow>

#include <algorithm>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

GnomeWindowNews::GnomeWindowNews(GnomeBus &bus)
{
    bus.listen(DesktopExtension::object(), u"WindowsChanged"_s, this, SLOT(take()));
}

std::optional<GnomeWindow> MutterWindows::find(WindowHandle window)
{
    const std::vector<GnomeWindow> all = m_extension.windows();
    const auto found = std::ranges::find(all, window, &GnomeWindow::handle);
    return found == all.end() ? std::nullopt : std::optional(*found);
}

QRect MutterWindows::change(const QString &method, WindowHandle window, const QVariantList &numbers)
{
    if (m_session.takeUnsettled())
        m_extension.settle();
    return m_extension.change(method, window, numbers);
}

// A program that has to draw its window anew has as much time as the shell.
void MutterWindows::waitUntil(WindowHandle window, const std::function<bool(const GnomeWindow &)> &condition)
{
    constexpr int patience = 5000; // milliseconds
    constexpr int lookAgain = 5;
    for (const QDeadlineTimer deadline(patience); !deadline.hasExpired(); QThread::msleep(lookAgain)) {
        const auto now = find(window);
        if (!now || condition(*now))
            return;
    }
}

void MutterWindows::waitForFocus(WindowHandle window)
{
    waitUntil(window, [](const GnomeWindow &now) { return now.isFocused; });
}

// A window that was maximised is drawn by its program in an earlier size first. It is put where it shall be
// once that has been seen, and again until it stays there.
void MutterWindows::waitForFrame(const GnomeWindow &before, const QRect &frame)
{
    constexpr int untilAskedAgain = 200; // milliseconds
    constexpr int enough = 5; // looks in a row
    waitUntil(before.handle, [&](const GnomeWindow &now) { return now.frame != before.frame; });
    QDeadlineTimer again(0);
    int settled = 0;
    waitUntil(before.handle, [&](const GnomeWindow &now) {
        settled = now.frame == frame ? settled + 1 : 0;
        if (settled == 0 && again.hasExpired()) {
            // The same size is not asked of a program twice in a row.
            for (const int width : {frame.width() - 1, frame.width()}) {
                m_extension.change(u"Place"_s, before.handle, {frame.x(), frame.y(), width, frame.height()});
            }
            again.setRemainingTime(untilAskedAgain);
        }
        return settled == enough;
    });
}

WindowHandle MutterWindows::foreground()
{
    const std::vector<GnomeWindow> all = m_extension.windows();
    const auto found = std::ranges::find(all, true, &GnomeWindow::isFocused);
    return found == all.end() ? 0 : found->handle;
}

WindowHandle MutterWindows::underPointer()
{
    const auto pointer = m_extension.pointer();
    if (!pointer)
        return 0;
    const std::vector<GnomeWindow> all = m_extension.windows();
    const auto found = std::ranges::find_if(all, [&](const GnomeWindow &window) {
        return !window.isMinimised && window.isHere && window.frame.contains(*pointer);
    });
    return found == all.end() ? 0 : found->handle;
}

WindowHandle MutterWindows::byTitle(const QString &title)
{
    const std::vector<GnomeWindow> all = m_extension.windows();
    const auto found = std::ranges::find_if(
        all, [&](const GnomeWindow &window) { return !window.isHidden && window.title == title; });
    return found == all.end() ? 0 : found->handle;
}

QString MutterWindows::title(WindowHandle window)
{
    const auto found = find(window);
    return found ? found->title : QString();
}

// The compositor knows windows by their process and title; of two that have both alike the upper one counts.
WindowHandle MutterWindows::own(quintptr id)
{
    const QWindowList ours = QGuiApplication::allWindows();
    const auto asked = std::ranges::find_if(
        ours, [&](const QWindow *window) { return window->handle() && window->winId() == id; });
    if (asked == ours.end())
        return 0;
    const std::vector<GnomeWindow> all = m_extension.windows();
    const auto found = std::ranges::find_if(all, [&](const GnomeWindow &window) {
        return window.process == getpid() && window.title == (*asked)->title();
    });
    return found == all.end() ? 0 : found->handle;
}

std::vector<WindowHandle> MutterWindows::stacking()
{
    std::vector<WindowHandle> handles;
    for (const GnomeWindow &window : m_extension.windows()) {
        if (!window.isHidden)
            handles.push_back(window.handle);
    }
    return handles;
}

bool MutterWindows::isOnScreen(WindowHandle window)
{
    const auto found = find(window);
    return found && !found->isMinimised && found->isHere;
}

QRect MutterWindows::rectangle(WindowHandle window)
{
    const auto found = find(window);
    return found ? found->frame : QRect();
}

void MutterWindows::close(WindowHandle window)
{
    change(u"Close"_s, window);
}

void MutterWindows::activate(WindowHandle window)
{
    const auto found = find(window);
    if (!found || found->isHidden)
        return;
    change(u"Activate"_s, window);
    waitForFocus(window);
}

void MutterWindows::hide(WindowHandle window)
{
    change(u"Hide"_s, window);
}

void MutterWindows::show(WindowHandle window)
{
    const auto found = find(window);
    if (!found || (found->isMinimised && !found->isHidden))
        return;
    change(u"Show"_s, window);
    waitForFocus(window);
}

void MutterWindows::minimise(WindowHandle window)
{
    change(u"Minimise"_s, window);
}

void MutterWindows::maximise(WindowHandle window)
{
    const QRect frame = change(u"Maximise"_s, window);
    waitUntil(window, [&](const GnomeWindow &now) { return now.frame == frame; });
}

void MutterWindows::moveTo(WindowHandle window, QPoint corner)
{
    const auto found = find(window);
    if (!found)
        return;
    const QRect frame = change(u"Move"_s, window, {corner.x(), corner.y()});
    if (found->isMinimised)
        return;
    // A window of the same size is there at once.
    if (found->isMaximised)
        waitForFrame(*found, frame);
    waitForFocus(window);
}

void MutterWindows::bringHere(WindowHandle window)
{
    change(u"BringHere"_s, window);
}

void MutterWindows::setTopmost(WindowHandle window)
{
    change(u"KeepAbove"_s, window);
}

std::unique_ptr<News> MutterWindows::newsOfTitles()
{
    return std::make_unique<GnomeWindowNews>(m_extension.bus());
}

std::unique_ptr<News> MutterWindows::newsOfEnd(WindowHandle)
{
    return std::make_unique<GnomeWindowNews>(m_extension.bus());
}

} // namespace plum
