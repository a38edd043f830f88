#pragma once

#include "library/script_file.h"

#include <QString>

#include <optional>

namespace plum {

class AppListFile;
class AppLists;
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
    virtual bool askYesNo(const QString &question, const QString &title) = 0;
};

// Unpacks packages.
class PackageUnpacker
{
public:
    virtual ~PackageUnpacker() = default;

    // Extracts the archive at `packagePath` into `folder`, which is made when it is missing; both are paths
    // of the system. Returns false when nothing usable came out of it.
    virtual bool extract(const QString &packagePath, const QString &folder) = 0;
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
    struct Parts
    {
        const Paths &paths;
        TextCodec &codec;
        Shell &shell;
        LibraryDialogs &dialogs;
        PackageUnpacker &unpacker;
        AppLists &lists;
        AppListFile &listFile;
    };

    explicit AppLibrary(const Parts &parts)
        : m(parts)
    {
    }

    // False for a keyword with a character that no folder name may have, which is said in a message, and for
    // an empty one, silently. Blanks around it do not count.
    bool CheckKeyword(const QString &keyword) const;

    // Whether a keyword is taken: by an app's folder or a plain file, letter case apart. The empty keyword
    // stands for the library itself.
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

    bool RenameApp(const QString &oldKeyword, const QString &newKeyword);

    // Asks first. Without a keyword nothing is selected, and nothing happens.
    bool DeleteApp(const QString &keyword);

    // `package` is "<packagePath>|<keyword>".
    bool InstallPackage(const QString &package);

    enum class Dropped {
        Ignored, // no package
        Done,
        NeedsName, // an app of that name exists; `pendingInstall` waits for another name
    };

    Dropped DropPackage(const QString &path);

    // The package text that waits for a name, "<packagePath>|<keyword>".
    const QString &pendingInstall() const { return m_pendingInstall; }
    void setPendingInstall(const QString &package) { m_pendingInstall = package; }

    void ListApps(QStringList &list) const;
    void OpenAppFolder(const QString &keyword);

    // Reads `mostBytes` of the script at most.
    AppGuide guide(const QString &keyword, qint64 mostBytes = 64 * 1024) const;

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

    Parts m;
    QString m_pendingInstall;
};

} // namespace plum
