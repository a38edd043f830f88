#include "platform/choice/desktop_choice.h"

#include "platform/linux/compositor_offer.h"
#include "platform/linux/platform_module.h"

#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Without one of these hardly a script gets far.
constexpr std::array needed{"zwlr_virtual_pointer_manager_v1", "zwp_virtual_keyboard_manager_v1",
    "zwlr_screencopy_manager_v1", "zwlr_data_control_manager_v1"};

bool isKnownCompositor()
{
    const std::vector<QByteArray> offer = compositorOffer();
    return std::ranges::all_of(needed, [&](const char *interface) {
        return std::ranges::any_of(offer, [&](const QByteArray &offered) { return offered == interface; });
    });
}

} // namespace

DesktopKind chosenDesktop()
{
    const QByteArray wanted = qgetenv("PLUM_PLATFORM");
    if (wanted == "x11")
        return DesktopKind::X11;
    if (wanted == "wayland")
        return DesktopKind::Wayland;
    if (qgetenv("QT_QPA_PLATFORM").startsWith("xcb"))
        return DesktopKind::X11;
    return isKnownCompositor() ? DesktopKind::Wayland : DesktopKind::X11;
}

// The helper programs lie in folders of their own, below the one of the program.
PlatformModule *backendFor(DesktopKind kind)
{
    const QString name = kind == DesktopKind::Wayland ? u"plum-wayland.so"_s : u"plum-x11.so"_s;
    constexpr int deepest = 5; // folders
    QDir folder = QFileInfo(QFileInfo(u"/proc/self/exe"_s).symLinkTarget()).dir();
    for (int depth = 0; depth < deepest; ++depth) {
        if (folder.exists(name))
            return qobject_cast<PlatformModule *>(QPluginLoader(folder.filePath(name)).instance());
        if (!folder.cdUp())
            break;
    }
    return nullptr;
}

} // namespace plum
