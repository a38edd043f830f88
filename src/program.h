#pragma once

#include "flight/flight.h"
#include "grants/app_grants.h"
#include "library/app_folders.h"
#include "library/app_list_file.h"
#include "library/launcher_requests.h"
#include "library/package_installer.h"
#include "library/single_instance.h"
#include "platform/launcher_call.h"
#include "platform/launcher_name.h"
#include "platform/platform.h"
#include "platform/stop_signal.h"
#include "screen_picking.h"
#include "script_system.h"
#include "stopping/hand_stop.h"
#include "store/answered_shell.h"
#include "store/clipboard_channel.h"
#include "store/loaded_store_transfers.h"
#include "store/store_host.h"
#include "store/store_process.h"
#include "store/store_updates.h"
#include "store/webbox.h"
#include "ui/asking/install_questions.h"
#include "ui/launcher_ui.h"
#include "ui/store_door.h"

#include <memory>

namespace plum {

// The whole program: a platform, the launcher, the script engine and the store, made once and wired together.
class Program
{
public:
    enum class Purpose {
        Launcher,
        ScriptStart,
    };

    // Without a desktop only a script start makes sense.
    Program(const QString &programPath, bool hasDesktop, Purpose purpose);
    Q_DISABLE_COPY_MOVE(Program)

    // The launcher. False when another one runs for the same program folder; that one comes forward, and this
    // process ends silently.
    bool startLauncher();

    // Runs the script that `commandLine` names, with the launcher hidden. The process ends with the script's
    // last line; this returns when the script is suspended, has failed, or does not exist.
    void runScript(const QString &commandLine);

private:
    // The launcher and the store want each other; each sees an interface that passes its wishes on.
    class Door final : public StoreDoor
    {
    public:
        explicit Door(Program &program)
            : m_program(program)
        {
        }
        void openCatalogue() override;
        void askInstall(InstallFlag flag, const QString &name) override;
        void installUpdates() override;

    private:
        Program &m_program;
    };
    class Host final : public StoreHost
    {
    public:
        explicit Host(Program &program)
            : m_program(program)
        {
        }
        void showMessage(const Message &message) override;
        void askName(const QString &name) override;
        void askInstall(const InstallOffer &offer, std::function<void()> install) override;
        bool isAsking() const override;
        void addApp(const QString &keyword) override;

    private:
        Program &m_program;
    };

    [[noreturn]] void end(int status);

    // Asks whether to install what is offered, with what the app may do then.
    void askInstall(InstallOffer offer, std::function<void()> install);

    // Whether an app may run under what it was granted, and its version was not taken back by the store;
    // otherwise the user is asked.
    bool mayRun(const QString &keyword);
    void tellSheet(const QString &keyword);

    // The page of what the last run did.
    QString pageOfLastRun() const;
    void keepWhatHappened(const QString &sentence);
    void showWhatHappened();

    // Carries out what was asked for outside of the launcher.
    void takeRequests();
    void carryOut(const LauncherRequest &request);
    bool runWished(const QString &keyword);
    bool installWished(const QString &path);
    void takeName();

    std::unique_ptr<Platform> m_platform;
    ScreenPicking m_picking;
    StopSignal m_stop;
    HandStop m_hand;
    StoreAddresses m_addresses;
    Door m_door{*this};
    Host m_host{*this};
    AppFolders m_folders;
    AppListFile m_listFile;
    AppGrants m_grants;
    PackageInstaller m_installer;
    InstallQuestions m_questions;
    LauncherUi m_ui;
    ClipboardChannel m_channel;
    StoreProcess m_storeWindow;
    LoadedStoreTransfers m_transfers;
    webbox m_store;
    StoreUpdates m_updates;
    AnsweredShell m_shell;
    std::unique_ptr<Flight> m_flight; // null in a script start, which keeps nothing
    ScriptSystem m_scripts;
    SingleInstance m_instance;
    LauncherRequests m_requests;
    std::unique_ptr<LauncherCall> m_call;
    std::unique_ptr<LauncherName> m_name;
};

} // namespace plum
