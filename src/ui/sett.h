#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace plum {

struct Theme;

// The commands of the settings menus, by the names of their items.
enum class MenuCommand {
    addnew, // opens the add panel
    editok, // opens the edit panel for the selected app
    editname, // opens the rename panel for the selected app
    delthis, // deletes the selected app
    openthisfold, // opens the selected app's folder
    shuoming, // shows the selected app's guide
    goBack, // installs the version that the selected app was before
    mayDo, // shows what the selected app may do, and takes it back
    rjsz, // shows the hotkey window
    xianshi, // shows the launcher
    yctp, // hides the launcher
    autostart, // turns on or off whether the launcher starts when the user logs in
    lookAgain, // takes in folders that were copied into the library
    manual, // shows the scripting manual
    keys, // shows the page of keys
    tuichu, // exits through the launcher's exit routine
    stop, // ends the runs that go on
    whatHappened, // shows what the last run did
    guanbi, // ends the process at once
    fixit, // registers the component that scripts' dialogs want
    about, // the product's home page
    gfwz, // the product page
    offs, // the product page
    discuss, // the discussion page
    funcstore, // the discussion page
};

// `sett`: the tray icon and the three pop-up menus. It is never shown itself. On a desktop without a tray it
// is just the menus.
class sett final : public QObject
{
    Q_OBJECT

public:
    // `registersComponents`: the system can do what `fixit` asks for; elsewhere the item is left out.
    explicit sett(bool registersComponents);
    ~sett() override;
    Q_DISABLE_COPY_MOVE(sett)

    QMenu cd; // opened from the tray icon
    QMenu mmmm; // opened from the launcher's menu pictures
    QMenu list2you; // opened from the launcher's lists

    void setTheme(const Theme &theme);

    // Making the icon asks the desktop's tray and waits for its answer.
    void addTrayIcon();
    void removeTrayIcon();

    // The version that the selected app can be brought back to; empty when there is none.
    void setVersionBefore(const QString &version);

    // Whether the launcher starts when the user logs in.
    void setAutostart(bool isOn);

    // The icon says what runs; nothing when nothing does.
    void setRunning(const QString &plainText);

    // The icon's tool tip says how far a download is; nothing when there is none.
    void setDownload(const QString &plainText);

    // The desktop shows the icon.
    bool hasTrayIcon() const { return m_tray && QSystemTrayIcon::isSystemTrayAvailable(); }

    // A button was released on the tray icon; opens `cd` for the left and the right one.
    void trayEvent(QSystemTrayIcon::ActivationReason reason);

Q_SIGNALS:
    void commandChosen(plum::MenuCommand command);

private:
    void fill(QMenu &menu, quint32 which);

    bool m_registersComponents;

    std::unique_ptr<QSystemTrayIcon> m_tray;
    void showToolTip();

    bool m_showsRun = false;
    QString m_running;
    QString m_download;
};

} // namespace plum
