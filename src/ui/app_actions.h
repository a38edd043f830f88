#pragma once

#include "library/script_file.h"
#include "ui/editing/held_line.h"
#include "ui/picked_text.h"

#include <QObject>
#include <QString>

#include <functional>

namespace plum {

class AppFaces;
class AppLibrary;
class MessageBoxes;
class Shell;
class frmSet;

// What the menus and panels of the launcher do with apps: write, edit, rename, delete and explain them.
class AppActions final : public QObject
{
    Q_OBJECT

public:
    struct Needs
    {
        frmSet &window;
        AppLibrary &appLibrary;
        AppFaces &faces;
        Shell &shell;
        MessageBoxes &messages;
        std::function<void(const QString &path)> setScriptPath; // of the script that is being looked at
        std::function<void(const QString &keyword)> run;
        PickFromScreen pick = {};
        // Runs an app that is open in the editor, and holds it there.
        std::function<void(const QString &keyword, FollowFrom from)> follow = {};
    };

    explicit AppActions(Needs needs);

    // Whether the edit panel may be left: its text is saved, given up, or not there. Asks.
    bool mayLeaveEditor();

    // `keyword`: what the new app is going to be called, if that is known.
    void addApp(const QString &keyword = {});
    void editApp(const QString &keyword);
    void editAtLine(const QString &keyword, int line); // counted from 0
    void editDotScript(const QString &keyword);
    void editFile(const QString &systemPath); // a script at any place
    void renameApp(const QString &keyword);
    void deleteApp(const QString &keyword);
    void showGuide(const QString &keyword);
    void goBack(const QString &keyword);

    // Lists the apps whose folders have come into the library in another way, and says which.
    void lookAgain();

private:
    void leaveEditor();
    bool save();
    bool saveEdited();
    void runEdited();
    void followEdited(FollowFrom from);
    void openApp(const QString &keyword);
    void confirmRename();
    void pickForEdited();
    void appendDropped(const QStringList &paths);

    Needs m;
    ScriptFile m_opened; // what the edit panel shows, as it was read
};

} // namespace plum
