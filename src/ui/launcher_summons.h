#pragma once

#include "library/settings_file.h"
#include "platform/desktop_windows.h"
#include "ui/sethotkey.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>

namespace plum {

class GlobalHotkey;
class frmSet;
class hotkey;

// Brings the launcher's window to the user and takes it away again: the hotkey, the window in which it is
// chosen, and the keyboard, which the shown window has to get.
class LauncherSummons final : public QObject
{
    Q_OBJECT

public:
    struct Needs
    {
        frmSet &window;
        GlobalHotkey &hotkey;
        Windows &windows;
        SettingsFile &settings;
    };

    explicit LauncherSummons(const Needs &needs);
    ~LauncherSummons() override;
    Q_DISABLE_COPY_MOVE(LauncherSummons)

    // Registers the hotkey of the settings, if there is one.
    void startHotkey();

    // Gives the hotkey back to the desktop.
    void unregisterHotkey() { m_module.UnregisterLauncherHotkey(); }

    // Shows the launcher in front of the other windows, ready for a keyword.
    void showAndActivate();

    // Shows it so, and says which window was in front until then; 0: the launcher itself, or none.
    WindowHandle comeForward();

    // Gives the keyboard to a window, which had it before. The launcher asks for it no more.
    void giveWay(WindowHandle window);

    // The same, wherever the window is: also on another virtual desktop.
    void fetch();

    bool hasHotkey() const { return m_module.isRegistered(); }

    void showHotkeyWindow();

    // Says under the lists whether there is a hotkey.
    void showHint();

private:
    void noteSeen();
    bool isOnScreen(quint32 time);
    void toggle(quint32 time);
    void insistOnFocus();
    void makeHotkeyWindow();

    Needs m;
    sethotkey m_module;
    QPointer<hotkey> m_hotkeyWindow;
    QTimer m_insists; // on the keyboard, soon
    std::optional<quint32> m_seenSince; // by the hotkey's clock
};

} // namespace plum
