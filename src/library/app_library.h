#pragma once

#include "library/app_folders.h"
#include "library/grant_file.h"
#include "library/script_file.h"

#include <QString>

#include <optional>

namespace plum {

class AppListFile;
class AppLists;
class PackageInstaller;
class Paths;
class Shell;
class TextCodec;
struct Message;

// How the library talks to the user. Both calls return when the user has answered.
class LibraryDialogs
{
public:
    virtual ~LibraryDialogs() = default;

    virtual void showMessage(const Message &message) = 0;

    // The question does not name the app.
    virtual bool askToDelete(const QString &question, const QString &title, const QString &keyword) = 0;
};

// What the first line of a script says about it.
struct AppGuide
{
    enum class Kind {
        None,
        Text,
        Address,
    };

    Kind kind = Kind::None;
    QString content = {};
};

AppGuide guideOf(const QString &firstLine);

// The library of apps below `config\apps\`: one folder an app, named by its keyword. The operations report to
// the user themselves; their results say whether the library changed. A keyword that is no plain folder name
// (empty, "..", with a separator) never reaches a file outside its own folder.
class AppLibrary
{
public:
    struct Needs
    {
        const Paths &paths;
        TextCodec &codec;
        Shell &shell;
        LibraryDialogs &dialogs;
        PackageInstaller &installer;
        AppLists &lists;
        AppListFile &listFile;
    };

    explicit AppLibrary(const Needs &needs)
        : m(needs)
        , m_folders(needs.paths)
        , m_grants(needs.paths)
    {
    }

    // False for a keyword with a character that no folder name may have, which is said in a message, and for
    // an empty one, silently. Blanks around it do not count.
    bool CheckKeyword(const QString &keyword) const;

    // What keeps a new app from having this keyword, as a sentence; empty when nothing does.
    QString faultOf(const QString &keyword) const;

    // Whether a keyword is taken: by an app's folder or a plain file, letter case apart, also by an app that
    // is being replaced. The empty keyword stands for the library itself.
    bool exists(const QString &keyword) const;

    bool CreateApp(const QString &keyword, const QString &scriptText);

    // Replaces the whole of `main.wf`. Named by the system's interface; the editor keeps what it can of the
    // file that it opened, through `saveScript`.
    bool SaveApp(const QString &keyword, const QString &scriptText);

    // A script of an app, `main.wf` or `.main.wf`, as it is now; empty when there is none.
    ScriptFile scriptFile(const QString &keyword, const QString &fileName) const;

    // Saves the text that the editor shows of a script that it opened.
    bool saveScript(const QString &keyword, const QString &fileName, const ScriptFile &opened,
        const QString &shown, ScriptFile::LineEnds lineEnds);

    // The same of a script at any other place, by its path of the system.
    ScriptFile scriptAt(const QString &systemPath) const;
    bool saveScriptAt(const QString &systemPath, const ScriptFile &opened, const QString &shown,
        ScriptFile::LineEnds lineEnds);

    // The app whose script `main.wf` that is; empty for any other file.
    QString keywordOf(const QString &systemPath) const;

    bool RenameApp(const QString &oldKeyword, const QString &newKeyword);

    // Asks first. Without a keyword nothing is selected, and nothing happens.
    bool DeleteApp(const QString &keyword);

    // Installs the package at `packagePath`, over the app that is there if there is one; its other files
    // stay.
    bool InstallPackage(const QString &packagePath, const QString &keyword);

    enum class Dropped {
        Ignored, // no package
        Refused, // the user was told why
        NeedsName, // an app of that name exists
        MayInstall, // under its own name
    };

    // What a dropped file is. Nothing is installed: the user is asked first.
    Dropped DropPackage(const QString &path);

    // The keyword that a package file names: its name without its ending.
    static QString packageKeyword(const QString &path);

    // The version that the app was before its last update, and the way back to it.
    QString versionBefore(const QString &keyword) const;
    bool goBack(const QString &keyword);

    // In bytes; 0 where there is no such package.
    qint64 packageSize(const QString &path) const;

    void ListApps(QStringList &list) const;
    // Lists the apps whose folders are there and whose keywords are not listed yet, and returns them. An app
    // that is listed without a folder stays.
    QStringList takeInNewApps();

    void OpenAppFolder(const QString &keyword);

    // Reads `mostBytes` of the script at most.
    AppGuide guide(const QString &keyword, qint64 mostBytes = qint64(64) * 1024) const;

    const AppFolders &folders() const { return m_folders; }

    // The full path with "\" of a file in an app's folder.
    QString appPath(const QString &keyword, const QString &fileName = {}) const;

    // Whether `keyword` is the plain name of a folder in the library.
    static bool isFolderName(const QString &keyword);

private:
    std::optional<QString> systemFolder(const QString &keyword) const;
    bool saveBytes(const QString &keyword, const QString &fileName, const QByteArray &script);
    void sayFailed(const QString &keyword) const;
    void say(const QString &text) const;
    void saveOrder() const;
    bool replaceInApp(const QString &keyword, const QString &fileName, const QByteArray &content) const;

    Needs m;
    AppFolders m_folders;
    GrantFile m_grants;
};

} // namespace plum
