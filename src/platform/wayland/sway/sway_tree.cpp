#include "platform/wayland/sway/sway_tree.h"

#include "platform/wayland/sway/sway_socket.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Sway does not draw marks that begin so.
constexpr auto markBegin = "_plum."_L1;
constexpr auto hiddenWord = "hidden"_L1;
constexpr auto minimisedWord = "minimised"_L1;
constexpr auto floatingWord = "floating"_L1;
constexpr auto tiledWord = "tiled"_L1;
constexpr auto fullscreenWord = "fullscreen"_L1;

QRect rectangleOf(const QJsonObject &object)
{
    return {object.value("x"_L1).toInt(), object.value("y"_L1).toInt(), object.value("width"_L1).toInt(),
        object.value("height"_L1).toInt()};
}

// Where a walk through the tree is.
struct Place
{
    QString currentWorkspace; // of the output
    bool isInScratchpad = false;
    bool isOnCurrentWorkspace = false;
    bool isFloating = false;
};

SwayWindow windowOf(const QJsonObject &node, const Place &place)
{
    SwayWindow window;
    window.handle = node.value("id"_L1).toInt();
    window.title = node.value("name"_L1).toString();
    window.process = node.value("pid"_L1).toInt();
    window.isFocused = node.value("focused"_L1).toBool();
    window.isFloating = place.isFloating;
    window.isFullscreen = node.value("fullscreen_mode"_L1).toInt() != 0;
    window.isInScratchpad = place.isInScratchpad;
    window.isOnCurrentWorkspace = place.isOnCurrentWorkspace;
    window.isVisible = node.value("visible"_L1).toBool();
    // Sway counts the title bar apart.
    window.frame = rectangleOf(node.value("rect"_L1).toObject());
    const QRect titleBar = rectangleOf(node.value("deco_rect"_L1).toObject());
    if (!titleBar.isEmpty() && !window.isFullscreen)
        window.frame.setTop(window.frame.top() - titleBar.height());
    window.isDrawn = rectangleOf(node.value("geometry"_L1).toObject()).size()
        == rectangleOf(node.value("window_rect"_L1).toObject()).size();
    for (const QJsonValue mark : node.value("marks"_L1).toArray()) {
        window.marks += mark.toString();
        if (const auto putAway = PutAway::fromMark(mark.toString()); putAway && place.isInScratchpad)
            window.putAway = putAway;
    }
    return window;
}

// Adds the windows below `node`, the lowest first.
void walk(const QJsonObject &node, Place place, std::vector<SwayWindow> &windows)
{
    const QString type = node.value("type"_L1).toString();
    const QString name = node.value("name"_L1).toString();
    if (type == "output"_L1) {
        place.currentWorkspace = node.value("current_workspace"_L1).toString();
    } else if (type == "workspace"_L1) {
        place.isInScratchpad = name == "__i3_scratch"_L1;
        place.isOnCurrentWorkspace = !place.isInScratchpad && name == place.currentWorkspace;
    } else if (type == "floating_con"_L1) {
        place.isFloating = true;
    }
    const QJsonArray tiled = node.value("nodes"_L1).toArray();
    const QJsonArray floating = node.value("floating_nodes"_L1).toArray();
    if (node.value("pid"_L1).isDouble() && tiled.isEmpty() && floating.isEmpty())
        windows.push_back(windowOf(node, place));
    for (const QJsonValue child : tiled)
        walk(child.toObject(), place, windows);
    for (const QJsonValue child : floating)
        walk(child.toObject(), place, windows);
}

} // namespace

std::optional<PutAway> PutAway::fromMark(const QString &mark)
{
    // _plum.MANNER.BEFORE.X.Y.WIDTH.HEIGHT.HANDLE, the handle because two windows never have the same mark
    const QStringList fields = mark.split(u'.');
    if (!mark.startsWith(markBegin) || fields.size() != 8)
        return {};
    PutAway putAway;
    putAway.manner = fields[1] == hiddenWord ? Manner::Hidden : Manner::Minimised;
    putAway.before = fields[2] == tiledWord ? Before::Tiled
        : fields[2] == fullscreenWord       ? Before::Fullscreen
                                            : Before::Floating;
    putAway.rectangle = {fields[3].toInt(), fields[4].toInt(), fields[5].toInt(), fields[6].toInt()};
    return putAway;
}

QString PutAway::mark(WindowHandle window) const
{
    const auto mannerWord = manner == Manner::Hidden ? hiddenWord : minimisedWord;
    const auto beforeWord = before == Before::Tiled ? tiledWord
        : before == Before::Fullscreen              ? fullscreenWord
                                                    : floatingWord;
    return u"%1%2.%3.%4.%5.%6.%7.%8"_s.arg(markBegin, mannerWord, beforeWord)
        .arg(rectangle.x())
        .arg(rectangle.y())
        .arg(rectangle.width())
        .arg(rectangle.height())
        .arg(window);
}

QRect SwayWindow::rectangle() const
{
    return putAway && putAway->before != PutAway::Before::Floating ? putAway->rectangle : frame;
}

std::vector<SwayWindow> readSwayTree(SwaySocket &socket)
{
    std::vector<SwayWindow> windows;
    walk(socket.ask(SwaySocket::Kind::GetTree).object(), {}, windows);
    std::ranges::reverse(windows);
    // Full screens lie over all others, and what is put away lies below them.
    std::ranges::stable_sort(windows, {}, [](const SwayWindow &window) {
        return window.isInScratchpad ? 2 : window.isFullscreen ? 0 : 1;
    });
    return windows;
}

} // namespace plum
