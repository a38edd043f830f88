#include "platform/wayland/kwin/kwin_windows.h"

#include "platform/wayland/kwin/kwin_scripts.h"
#include "platform/wayland/kwin/kwin_window_news.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QThread>
#include <QUuid>
#include <QWindow>

#include <algorithm>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What KWin works out. Of two windows with one title KWin numbers the second; a mark that no keyboard has
// stands behind that number.
constexpr QStringView definitions = uR"(
function isCounted(w) {
    return !(w.desktopWindow || w.dock || w.popupWindow || w.tooltip || w.notification || w.criticalNotification
        || w.onScreenDisplay || w.splash);
}
function isHidden(w) { return w.minimized && w.skipTaskbar && w.skipPager && w.skipSwitcher; }
function leaveOut(w, out) { w.skipTaskbar = out; w.skipPager = out; w.skipSwitcher = out; }
function isHere(w) { return w.onAllDesktops || w.desktop === workspace.currentDesktop; }
function rectangle(r) { return [r.x, r.y, r.width, r.height].map(Math.round); }
function windows() {
    return workspace.clientList().filter(isCounted).sort((a, b) => b.stackingOrder - a.stackingOrder);
}
function all() {
    return windows().map((w) => ({
        id: w.internalId.toString(), title: w.caption.replace(/ <\d+>\u200e$/, ""), pid: w.pid,
        frame: rectangle(w.frameGeometry), inside: rectangle(w.bufferGeometry), active: w === workspace.activeClient, hidden: isHidden(w),
        minimised: w.minimized, here: isHere(w)}));
}
function change(id, how, ...more) {
    const found = workspace.clientList().find((w) => w.internalId.toString() === id);
    return found ? rectangle(how(found, ...more)) : null;
}
function activate(w) {
    if (!isHere(w))
        workspace.currentDesktop = w.desktop;
    workspace.activeClient = w;
    return w.frameGeometry;
}
function comeBack(w) {
    if (isHidden(w))
        leaveOut(w, false);
    w.minimized = false;
    return activate(w);
}
function hide(w) { leaveOut(w, true); w.minimized = true; return w.frameGeometry; }
function minimise(w) {
    if (isHidden(w))
        leaveOut(w, false);
    w.minimized = true;
    return w.frameGeometry;
}
function maximise(w) {
    comeBack(w);
    w.setMaximize(true, true);
    return workspace.clientArea(KWin.MaximizeArea, w);
}
function move(w, x, y) {
    const wanted = {x: x, y: y, width: w.frameGeometry.width, height: w.frameGeometry.height};
    w.tile = null;
    w.fullScreen = false;
    w.setMaximize(false, false);
    w.frameGeometry = wanted;
    if (!w.minimized)
        activate(w);
    return wanted;
}
function bringHere(w) {
    if (!isHere(w))
        w.desktop = workspace.currentDesktop;
    return w.frameGeometry;
}
function keepAbove(w) { w.keepAbove = true; return w.frameGeometry; }
function close(w) { w.closeWindow(); return w.frameGeometry; }
)";

// Positive, and never 0. Two windows with one hash are no matter of this world.
WindowHandle handleOf(const QString &id)
{
    const QUuid uuid(id);
    const auto bytes = uuid.toRfc4122();
    quint32 hash = 2166136261U;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<quint8>(byte)) * 16777619U;
    return static_cast<WindowHandle>(hash & 0x7fffffffU) | 0x40000000;
}

QRect rectangleOf(const QJsonValue &value)
{
    const QJsonArray numbers = value.toArray();
    return {numbers.at(0).toInt(), numbers.at(1).toInt(), numbers.at(2).toInt(), numbers.at(3).toInt()};
}

KWinWindow windowOf(const QJsonValue &value)
{
    const QString id = value["id"_L1].toString();
    return {handleOf(id), id, value["title"_L1].toString(), value["pid"_L1].toInt(),
        rectangleOf(value["frame"_L1]), rectangleOf(value["inside"_L1]), value["active"_L1].toBool(),
        value["hidden"_L1].toBool(), value["minimised"_L1].toBool(), value["here"_L1].toBool()};
}

} // namespace

QJsonValue KWinWindows::evaluate(const QString &expression)
{
    return m_scripts.evaluate(definitions.toString(), expression);
}

std::vector<KWinWindow> KWinWindows::all()
{
    std::vector<KWinWindow> windows;
    for (const QJsonValue value : evaluate(u"all()"_s).toArray())
        windows.push_back(windowOf(value));
    return windows;
}

std::optional<QPoint> KWinWindows::pointer()
{
    const QJsonArray place = evaluate(u"[workspace.cursorPos.x, workspace.cursorPos.y]"_s).toArray();
    return place.size() == 2 ? std::optional(QPoint(place[0].toInt(), place[1].toInt())) : std::nullopt;
}

std::optional<KWinWindow> KWinWindows::find(const std::function<bool(const KWinWindow &)> &isIt)
{
    const std::vector<KWinWindow> windows = all();
    const auto found = std::ranges::find_if(windows, isIt);
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

std::optional<KWinWindow> KWinWindows::find(WindowHandle window)
{
    if (window <= 0)
        return {};
    return find([&](const KWinWindow &each) { return each.handle == window; });
}

// Runs a function of the definitions for the window, and returns the rectangle that the window will have.
QRect KWinWindows::change(const KWinWindow &window, const QString &call)
{
    return rectangleOf(evaluate(u"change(\"%1\", %2)"_s.arg(window.id, call)));
}

// A window has a new size once its program has drawn it. The program has half a second, counted in looks,
// since a KWin that is slow to answer is slow to hand things on; it has two seconds then.
void KWinWindows::waitForFrame(WindowHandle window, const QRect &frame)
{
    constexpr int patience = 2000; // milliseconds
    constexpr int lookAgain = 5;
    constexpr int looks = 60;
    constexpr int enough = 3; // looks in a row, since a drawing of an earlier size may be on its way
    const QDeadlineTimer deadline(patience);
    int settled = 0;
    for (int look = 0; look < looks && settled < enough && !deadline.hasExpired(); ++look) {
        QThread::msleep(lookAgain);
        const auto now = find(window);
        if (!now)
            return;
        settled = now->frame == frame ? settled + 1 : 0;
    }
}

WindowHandle KWinWindows::foreground()
{
    const auto found = find(&KWinWindow::isActive);
    return found ? found->handle : 0;
}

WindowHandle KWinWindows::underPointer()
{
    const auto place = pointer();
    const auto found = find([&](const KWinWindow &window) {
        return place && !window.isMinimised && window.isHere && window.frame.contains(*place);
    });
    return found ? found->handle : 0;
}

WindowHandle KWinWindows::byTitle(const QString &title)
{
    const auto found
        = find([&](const KWinWindow &window) { return !window.isHidden && window.title == title; });
    return found ? found->handle : 0;
}

QString KWinWindows::title(WindowHandle window)
{
    const auto found = find(window);
    return found ? found->title : QString();
}

// KWin knows windows by their process and title; of two that have both alike the upper one counts.
WindowHandle KWinWindows::own(quintptr id)
{
    const QWindowList ours = QGuiApplication::allWindows();
    const auto asked = std::ranges::find_if(
        ours, [&](const QWindow *window) { return window->handle() && window->winId() == id; });
    if (asked == ours.end())
        return 0;
    const auto found = find([&](const KWinWindow &window) {
        return window.process == getpid() && window.title == (*asked)->title();
    });
    return found ? found->handle : 0;
}

std::vector<WindowHandle> KWinWindows::stacking()
{
    std::vector<WindowHandle> handles;
    for (const KWinWindow &window : all()) {
        if (!window.isHidden)
            handles.push_back(window.handle);
    }
    return handles;
}

bool KWinWindows::isOnScreen(WindowHandle window)
{
    const auto found = find(window);
    return found && !found->isMinimised && found->isHere;
}

QRect KWinWindows::rectangle(WindowHandle window)
{
    const auto found = find(window);
    return found ? found->frame : QRect();
}

void KWinWindows::close(WindowHandle window)
{
    if (const auto found = find(window))
        change(*found, u"close"_s);
}

void KWinWindows::activate(WindowHandle window)
{
    if (const auto found = find(window); found && !found->isHidden)
        change(*found, u"comeBack"_s);
}

void KWinWindows::hide(WindowHandle window)
{
    if (const auto found = find(window))
        change(*found, u"hide"_s);
}

void KWinWindows::show(WindowHandle window)
{
    if (const auto found = find(window); found && (found->isHidden || !found->isMinimised))
        change(*found, u"comeBack"_s);
}

void KWinWindows::minimise(WindowHandle window)
{
    if (const auto found = find(window))
        change(*found, u"minimise"_s);
}

void KWinWindows::maximise(WindowHandle window)
{
    if (const auto found = find(window))
        waitForFrame(window, change(*found, u"maximise"_s));
}

void KWinWindows::moveTo(WindowHandle window, QPoint corner)
{
    if (const auto found = find(window))
        waitForFrame(window, change(*found, u"move, %1, %2"_s.arg(corner.x()).arg(corner.y())));
}

void KWinWindows::bringHere(WindowHandle window)
{
    if (const auto found = find(window))
        change(*found, u"bringHere"_s);
}

void KWinWindows::setTopmost(WindowHandle window)
{
    if (const auto found = find(window))
        change(*found, u"keepAbove"_s);
}

std::unique_ptr<News> KWinWindows::newsOfTitles()
{
    return KWinWindowNews::listening();
}

std::unique_ptr<News> KWinWindows::newsOfEnd(WindowHandle)
{
    return KWinWindowNews::listening();
}

} // namespace plum
