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
QString backendFile(DesktopKind kind)
{
    const QString name = kind == DesktopKind::Wayland ? u"plum-wayland.so"_s : u"plum-x11.so"_s;
    constexpr int deepest = 5; // folders
    QDir folder = QFileInfo(QFileInfo(u"/proc/self/exe"_s).symLinkTarget()).dir();
    for (int depth = 0; depth < deepest; ++depth) {
        if (folder.exists(name))
            return folder.filePath(name);
        if (!folder.cdUp())
            break;
    }
    return {};
}

PlatformModule *backendFor(DesktopKind kind)
{
    const QString file = backendFile(kind);
    return file.isEmpty() ? nullptr : qobject_cast<PlatformModule *>(QPluginLoader(file).instance());
}

} // namespace plum
