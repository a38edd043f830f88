#include "contract/peer/peer_desktop.h"

#include "platform/linux/compositor_offer.h"
#include "platform/wayland/connection/wayland_connection.h"
#include "platform/wayland/kwin/kwin_bus.h"
#include "platform/wayland/kwin/kwin_scripts.h"
#include "platform/wayland/kwin/kwin_windows.h"
#include "platform/wayland/mutter/desktop_extension.h"
#include "platform/wayland/sway/sway_socket.h"

#include <QBuffer>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QWindow>

#include <algorithm>
#include <unistd.h>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

bool isInWayland()
{
    return QGuiApplication::platformName() == "wayland"_L1;
}

bool isInGnome()
{
    static const bool isSo = familyOf(compositorOffer()) == CompositorFamily::Mutter;
    return isSo;
}

QRect rectangleOf(const QJsonValue &value)
{
    return {
        value["x"_L1].toInt(), value["y"_L1].toInt(), value["width"_L1].toInt(), value["height"_L1].toInt()};
}

// The window of this process in a part of sway's tree.
QJsonObject ownNode(const QJsonObject &part)
{
    if (part["pid"_L1].toInt() == getpid())
        return part;
    for (const char *list : {"nodes", "floating_nodes"}) {
        for (const QJsonValue child : part[QLatin1StringView(list)].toArray()) {
            if (const QJsonObject found = ownNode(child.toObject()); !found.isEmpty())
                return found;
        }
    }
    return {};
}

std::optional<PeerView> viewInSway()
{
    SwaySocket socket;
    const QJsonObject node = ownNode(socket.ask(SwaySocket::Kind::GetTree).object());
    if (node.isEmpty())
        return {};
    QRect frame = rectangleOf(node["rect"_L1]);
    const QRect inside = rectangleOf(node["window_rect"_L1]).translated(frame.topLeft());
    if (node["fullscreen_mode"_L1].toInt() == 0)
        frame.setTop(frame.top() - rectangleOf(node["deco_rect"_L1]).height());
    return PeerView{node["id"_L1].toInt(), frame, inside};
}

// What belongs to KWin is made when the first window is looked at.
struct KWin
{
    KWinBus bus;
    KWinScripts scripts{bus};
    KWinWindows windows{scripts};
};

KWin &kwin()
{
    static KWin made;
    return made;
}

// KWin is asked less often than somebody looks, or this program would have no time for its window.
std::optional<PeerView> viewInKWin()
{
    constexpr int lookAgain = 50; // milliseconds
    static QDeadlineTimer next(0);
    static std::optional<PeerView> last;
    if (!next.hasExpired())
        return last;
    last.reset();
    for (const KWinWindow &window : kwin().windows.all()) {
        if (window.process == getpid())
            last = PeerView{window.handle, window.frame, window.inside};
    }
    next.setRemainingTime(lookAgain);
    return last;
}

// Whether there is anything on the clipboard. KWin says nothing of one that is empty, and wl-paste waits for
// a word.
bool isOffered()
{
    WaylandConnection connection;
    if (!connection.dataControl())
        return false;
    bool isThere = false;
    static const zwlr_data_control_device_v1_listener listener = [] {
        zwlr_data_control_device_v1_listener made{};
        made.data_offer = [](void *, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *) {};
        made.selection = [](void *there, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
            *static_cast<bool *>(there) = offer != nullptr;
            if (offer)
                zwlr_data_control_offer_v1_destroy(offer);
        };
        made.finished = [](void *, zwlr_data_control_device_v1 *) {};
        return made;
    }();
    const WaylandOwned<zwlr_data_control_device_v1> device(
        zwlr_data_control_manager_v1_get_data_device(connection.dataControl(), connection.seat()));
    zwlr_data_control_device_v1_add_listener(device.get(), &listener, &isThere);
    connection.roundTrip();
    return isThere;
}

DesktopExtension &extension()
{
    static GnomeBus bus;
    static DesktopExtension extension(bus);
    return extension;
}

std::optional<PeerView> viewInGnome(const QWidget &window)
{
    const std::vector<GnomeWindow> all = extension().windows();
    const auto found = std::ranges::find(all, getpid(), &GnomeWindow::process);
    if (found == all.end())
        return {};
    return PeerView{
        found->handle, found->frame, found->frame.marginsRemoved(window.windowHandle()->frameMargins())};
}

void runWith(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished();
}

} // namespace

std::optional<PeerView> viewOf(const QWidget &window)
{
    if (isInWayland())
        return SwaySocket::isThere() ? viewInSway() : isInGnome() ? viewInGnome(window) : viewInKWin();
    // Not the widget's frame, which stays what it was at the first look.
    return PeerView{static_cast<WindowHandle>(window.winId()),
        window.geometry().marginsAdded(window.windowHandle()->frameMargins()), window.geometry()};
}

void place(const PeerView &window, const QRect &inside)
{
    if (!isInWayland())
        return;
    const QPoint corner = inside.topLeft() - (window.inside.topLeft() - window.frame.topLeft());
    if (!SwaySocket::isThere()) {
        if (isInGnome())
            extension().change(u"Move"_s, window.handle, {corner.x(), corner.y()});
        else
            kwin().windows.moveTo(window.handle, corner);
        return;
    }
    SwaySocket().run(u"[con_id=%1] move absolute position %2 %3"_s.arg(window.handle)
                         .arg(corner.x())
                         .arg(corner.y())
                         .toUtf8());
}

QString clipboardText()
{
    if (!isInWayland())
        return QGuiApplication::clipboard()->text();
    if (!isInGnome() && !isOffered())
        return {};
    QProcess paste;
    paste.start(u"wl-paste"_s, {u"--no-newline"_s});
    paste.waitForFinished();
    return QString::fromUtf8(paste.readAllStandardOutput());
}

void setClipboardText(const QString &text)
{
    if (isInWayland())
        runWith(u"wl-copy"_s, {}, text.toUtf8());
    else
        QGuiApplication::clipboard()->setText(text);
}

void setClipboardPicture()
{
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    if (!isInWayland()) {
        QGuiApplication::clipboard()->setImage(picture);
        return;
    }
    QBuffer png;
    picture.save(&png, "PNG");
    runWith(u"wl-copy"_s, {u"--type"_s, u"image/png"_s}, png.data());
}

} // namespace plum::contract
