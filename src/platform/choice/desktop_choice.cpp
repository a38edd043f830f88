#include "platform/choice/desktop_choice.h"

#include "platform/linux/compositor_offer.h"
#include "platform/linux/platform_module.h"

#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>

namespace plum {

using namespace Qt::StringLiterals;

DesktopKind chosenDesktop()
{
    const QByteArray wanted = qgetenv("PLUM_PLATFORM");
    if (wanted == "x11")
        return DesktopKind::X11;
    if (wanted == "wayland")
        return DesktopKind::Wayland;
    if (qgetenv("QT_QPA_PLATFORM").startsWith("xcb"))
        return DesktopKind::X11;
    return familyOf(compositorOffer()) != CompositorFamily::Unknown ? DesktopKind::Wayland : DesktopKind::X11;
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
