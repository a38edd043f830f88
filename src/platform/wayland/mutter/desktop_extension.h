#pragma once

#include "platform/desktop_windows.h"
#include "platform/wayland/mutter/gnome_bus.h"

#include <optional>
#include <span>
#include <sys/types.h>
#include <vector>

namespace plum {

// A window as Plum's extension of the GNOME Shell tells of it.
struct GnomeWindow
{
    WindowHandle handle = 0;
    pid_t process = 0;
    QString title;
    QRect frame;
    bool isFocused = false;
    bool isMinimised = false; // so are hidden ones
    bool isHidden = false;
    bool isMaximised = false;
    bool isHere = false; // on the workspace that the user sees
};

// Plum's extension of the GNOME Shell, which runs in the compositor. Without it, or while the screen is
// locked, there are no windows and nothing is done.
class DesktopExtension
{
public:
    explicit DesktopExtension(GnomeBus &bus)
        : m_bus(bus)
    {
    }

    static BusObject object();

    // The one above all others first.
    std::vector<GnomeWindow> windows();

    // The frame that the window will have, once its program has followed; null where there is no such window.
    // `method` is one of those that take a window and, some, further numbers.
    QRect change(const QString &method, WindowHandle window, const QVariantList &numbers = {});

    std::optional<QPoint> pointer();

    // Comes back when the keys and motions that were sent before have reached their windows.
    void settle();

    // Gives the keyboard keys for these characters; false where it needs none for them, or cannot have them.
    bool lendKeys(std::span<const char32_t> characters);
    void giveKeysBack();

    // As GTK writes accelerators, "<Alt>z".
    bool grabKeys(const QString &accelerator);
    void releaseKeys();

    // Empty, too, when the owner has not sent it within a second.
    QByteArray clipboardText();
    void setClipboardText(const QByteArray &text);

    GnomeBus &bus() { return m_bus; }

private:
    GnomeBus &m_bus;
};

} // namespace plum
