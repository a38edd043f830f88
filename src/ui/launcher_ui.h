#pragma once

#include "engine/launcher.h"
#include "engine/script_vocabulary.h"
#include "library/app_library.h"
#include "library/app_list_file.h"
#include "library/app_lists.h"
#include "library/settings_file.h"
#include "ui/app_faces.h"
#include "ui/caret_rest.h"
#include "ui/message_boxes.h"
#include "ui/sethotkey.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace plum {

class Platform;
class RunStart;
class RunTimeError;
class StoreDoor;
class frmSet;
class hotkey;
class sett;
class shurubox;
enum class MenuCommand;
struct RunState;

// The launcher as one object: it builds the windows, connects them with the library and the engine, and is
// what scripts see of it. With a script on the command line it is the input box and the
// messages alone.
class LauncherUi final : public QObject, public Launcher
{
    Q_OBJECT

public:
    // The hosts of the pages that the menus open, without a slash at the end.
    struct Sites
    {
        QString product;
        QString forum;
    };

    struct Surroundings
    {
        Platform &platform;
        StoreDoor &store;
        PackageUnpacker &unpacker;
        Sites sites;
        std::function<void(int status)> endProcess; // in order, at once
        std::function<void(const QString &line)> report; // one line on standard error
        bool hasDesktop = true; // somebody can see windows and answer them
    };

    explicit LauncherUi(Surroundings surroundings);
    ~LauncherUi() override;
    Q_DISABLE_COPY_MOVE(LauncherUi)

    // The engine is built on this object, so it comes later. Nothing is shown before.
    void connectEngine(RunState &state, RunStart &starts, ScriptVocabulary vocabulary);

    // Runs the whole run list: a script on the command line.
    void runAll();

    // The normal start: the list, the hotkey, the window, and soon after it the tray icon.
    void start();

    // Shows the launcher in front of the other windows, ready for a keyword.
    void showAndActivate();

    // Ends the process through the launcher's exit routine.
    void exit();

    // Adds an app from the store to the lists that do not hold it yet, and saves their order.
    void addInstalledApp(const QString &keyword);

    // Asks for the keyword of a package that the store is going to install.
    void askPackageName(const QString &name);

    AppLibrary &library() { return m_library; }
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
    void startHotkey();
    void completeStart();
    sett &menus(); // made when they are first asked for
    void noteSeen();
    bool isOnScreen(quint32 time);
    void toggle(quint32 time);
    void insistOnFocus();
    void runKeyword(const QString &keyword, bool remembersPath);
    void guarded(const std::function<void()> &run);
    void fail(const RunTimeError &error);

    shurubox &freshBox();
    void confirmInput(const QString &variable, const QString &text);
    void closeInput();
    void confirmName(const QString &name, bool checked);
    void packageDropped(const QString &path);

    void choose(MenuCommand command);
    void openAddPanel();
    void editApp(const QString &keyword);
    void editDotScript(const QString &keyword);
    void renameApp(const QString &keyword);
    void deleteApp(const QString &keyword);
    void showGuide(const QString &keyword);
    void saveEdited();
    void confirmRename();
    void showHotkeyWindow();
    void makeHotkeyWindow();
    void showHint();
    void openPage(const QString &address);
    void leaveDesktop();
    void reportUnseen(const QString &what, const QString &text);

    Surroundings m;
    RunState *m_state = nullptr;
    RunStart *m_starts = nullptr;
    ScriptVocabulary m_vocabulary;

    MessageBoxes m_messages;
    std::optional<CaretRest> m_caretRest;
    AppLists m_lists;
    AppListFile m_listFile;
    AppLibrary m_library;
    AppFaces m_faces;
    SettingsFile m_settings;
    std::unique_ptr<sethotkey> m_hotkeyModule; // with the launcher alone: a script start registers nothing

    std::optional<quint32> m_seenSince; // by the hotkey's clock

    // Where a package comes from whose name the box asks for: 0 the store, 1 dropped onto the lists. Nothing
    // sets it back to 0; kept.
    qint16 m_installMode = 0;

    bool m_isComplete = false;
    std::unique_ptr<frmSet> m_window;
    std::unique_ptr<sett> m_menus;
    QPointer<hotkey> m_hotkeyWindow;
    QPointer<shurubox> m_box;
};

} // namespace plum
