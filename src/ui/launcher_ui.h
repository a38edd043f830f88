#pragma once

#include "engine/launcher.h"
#include "engine/script_vocabulary.h"
#include "library/app_library.h"
#include "library/app_list_file.h"
#include "library/app_lists.h"
#include "library/settings_file.h"
#include "platform/input_pause.h"
#include "ui/app_actions.h"
#include "ui/asking/message_boxes.h"
#include "ui/asking/questions.h"
#include "ui/controls/caret_rest.h"
#include "ui/editing/run_stepping.h"
#include "ui/launcher_menus.h"
#include "ui/launcher_news.h"
#include "ui/launcher_summons.h"
#include "ui/lists/app_faces.h"
#include "ui/package_names.h"
#include "ui/run_display.h"
#include "ui/screen_pick.h"
#include "ui/script_runs.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace plum {

class Autostart;
class Windows;
class GlobalHotkey;
class RunStart;
class ScriptError;
class StopSignal;
class StoreDoor;
class frmSet;
class sett;
struct RunState;

// The launcher as one object: it builds the windows and what stands behind them, connects them, and is what
// scripts see of it. With a script on the command line it is the input box and the messages alone.
class LauncherUi final : public QObject, public Launcher
{
    Q_OBJECT

public:
    struct Needs
    {
        const Paths &paths;
        TextCodec &codec;
        Shell &shell;
        StoreDoor &store;
        PackageInstaller &installer;
        // Asks whether to install a package; calls `install` when the user agrees, and never otherwise.
        std::function<void(const InstallOffer &offer, std::function<void()> install)> askInstall;
        LauncherMenus::Sites sites;
        std::function<void(int status)> endProcess; // in order, at once
        std::function<void(const QString &line)> report; // one line on standard error
        bool hasDesktop = true; // somebody can see windows and answer them
        // What ends a run of edition 2, or keeps it from beginning.
        std::function<void(const ScriptError &error)> reportMistakes = {};
        StopSignal &stop;
        // Looks at the user's keyboard for a wish to stop, while a run goes on.
        std::function<void(bool isWatching)> watchHand;
        std::function<void()> releaseKeys; // every key and button that a run holds
        // Why a run's keys and clicks are kept back right now; and a wish that it does not wait for the hand.
        std::function<InputPause()> inputPause = {};
        std::function<void()> goOn = {};
        // Whether an app may run now; otherwise the user is asked, and the answer runs it.
        std::function<bool(const QString &keyword)> mayRun = {};
        // A run has failed, or was stopped; what it did is to be kept.
        std::function<void(const QString &sentence)> keepWhatHappened = {};
        // Shows what the last run did.
        std::function<void()> showWhatHappened = {};
        // Shows what an app may do.
        std::function<void(const QString &keyword)> tellSheet = {};
        // Shows the desktop and lets the user pick from it.
        PickFromScreen pick = {};
    };

    // What the shown launcher needs beyond that; a script start has none of it.
    struct Desktop
    {
        GlobalHotkey &hotkey;
        Windows &windows;
        std::function<void(std::function<void()> then)> whenTrayAnswers;
        bool registersComponents = false;
        Autostart &autostart;
    };

    explicit LauncherUi(Needs needs);
    ~LauncherUi() override;
    Q_DISABLE_COPY_MOVE(LauncherUi)

    // The engine is built on this object, so it comes later. Nothing is shown before. Only a launcher asks
    // for the vocabulary.
    void connectEngine(RunState &state, RunStart &starts, std::function<ScriptVocabulary()> vocabulary);

    // Runs an app of the library.
    void runApp(const QString &keyword) { run(keyword, false); }

    // What is told in passing by those who are no part of the launcher.
    LauncherNews &news() { return m_news; }

    // A run's keys and clicks are kept back from now on.
    void tellPause(InputPause pause);

    // Runs the whole run list: a script on the command line.
    void runAll() { m_runs.runAll(); }

    // The normal start: the list, the hotkey, the window, and soon after it the tray icon.
    void start(const Desktop &desktop);

    // Brings the launcher to the user, wherever it is: another start of the program asks for it.
    void fetch();

    // Asks whether to run or edit a script at any place (a path of the system); `run` is called for the
    // former.
    void openScript(const QString &systemPath, const std::function<void()> &run);

    // The panel for a new app.
    void addApp();

    // Ends what runs, as "Stop" does.
    void stop() { requestStop(); }

    // Asks whether to install a package, as if it had been dropped onto the list.
    void installPackage(const QString &path) { m_packageNames.packageDropped(path); }

    // Ends the process through the launcher's exit routine.
    void exit();

    // The user interrupts the process from its terminal: a script that was started there is stopped, a
    // launcher ends.
    void interrupt();

    // Adds an app from the store to the lists that do not hold it yet, and saves their order.
    void addInstalledApp(const QString &keyword);

    // So many apps have been brought to the version of the store.
    void noteUpdated(int apps);

    // Whether a script is running; one that waits for an answer is not.
    bool isRunning() const { return m_runs.isRunning(); }

    // Asks for the keyword of a package that the store is going to install.
    void askPackageName(const QString &name) { m_packageNames.askForStore(name); }
    bool isAskingPackageName() const { return m_questions.isAskingName(); }

    frmSet *window() { return m_window.get(); }

    QString keywordBoxText() const override;
    QString inputEntryText() const override;
    void showInput(const QString &prompt, const QString &variable) override;
    void showTip(const QString &text) override;
    void showMessage(const Message &message) override;
    void hideLauncher() override;
    void endProcess() override;

private:
    void connectWindow();
    void run(const QString &keyword, bool remembersPath);
    void completeStart();
    RunStepping &stepping();
    sett *madeMenus() const; // null where nobody has asked for them
    void noteShown();
    QString keysOfTip() const;
    void runLeft();
    void requestStop();
    void carryOutStop();
    void tellFailure(const Message &message);
    void tellStopped(const RunStopped::Place &where);
    bool canReturn() const;
    void leaveDesktop();
    void end(int status);
    void reportUnseen(const QString &what, const QString &text);

    Needs m;
    std::function<void(std::function<void()> then)> m_whenTrayAnswers;
    std::function<ScriptVocabulary()> m_makeVocabulary;
    ScriptVocabulary m_vocabulary; // empty in a script start

    MessageBoxes m_messages;
    std::optional<CaretRest> m_caretRest;
    AppLists m_lists;
    AppListFile m_listFile;
    AppLibrary m_library;
    AppFaces m_faces;
    SettingsFile m_settings;
    LauncherNews m_news;
    ScriptRuns m_runs;
    Questions m_questions;
    PackageNames m_packageNames;

    bool m_isEnding = false;
    RunStopped::Place m_lastStopped;

    // With the launcher alone.
    bool m_isComplete = false;
    bool m_tellsHowToReturn = false; // when the run that hid the launcher is over
    std::unique_ptr<frmSet> m_window;
    std::unique_ptr<AppActions> m_actions;
    std::unique_ptr<LauncherSummons> m_summons;
    std::unique_ptr<ScreenPick> m_screenPick;
    std::unique_ptr<RunStepping> m_stepping; // once a run is followed
    std::unique_ptr<LauncherMenus> m_menus;
    std::unique_ptr<RunDisplay> m_runDisplay;
};

} // namespace plum
