#pragma once

#include "platform/input_pause.h"
#include "platform/stop_signal.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace plum {

class frmSet;
class sett;

// What the launcher tells in passing: in its footer, at its tray icon, or as a note on the desktop while it
// is hidden. Without a window only what a terminal should know is told, on standard error.
class LauncherNews final : public QObject
{
    Q_OBJECT

public:
    explicit LauncherNews(std::function<void(const QString &line)> report);

    // From now on there is a window. Nobody may have asked for its menus yet: `madeMenus` is null then.
    void useWindow(frmSet &window, std::function<sett *()> madeMenus);

    // For how many apps the store has another version.
    void showUpdates(int apps);

    // How far a download of the store is, in percent; nothing when there is none.
    void showDownload(std::optional<int> percent);

    // A package of the store has not become an app.
    void sayNotInstalled(const QString &keyword);

    // How many apps have been brought to the version of the store.
    void sayUpdated(int apps);

    // A run was not allowed something: what, as a sentence.
    void sayRefused(const QString &sentence);

    // Keys and clicks of the run of `script` are kept back from now on.
    void sayPause(const QString &script, InputPause pause);

    // Too many runs wait for each other for another one to begin.
    void sayNotStarted();

    // A run has failed, and what it did can be shown.
    void sayFailed();

    void sayStopped(const RunStopped::Place &where);

    // The launcher is hidden, and neither a hotkey nor a tray icon brings it back. Told once.
    void sayHowToReturn();

private:
    std::function<void(const QString &line)> m_report;
    frmSet *m_window = nullptr;
    std::function<sett *()> m_madeMenus = [] { return nullptr; };
    bool m_saidHowToReturn = false;
};

} // namespace plum
