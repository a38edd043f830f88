#pragma once

#include "platform/file_claim.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace plum {

class AppFolders;
class AppListFile;

// Moves a file or folder (a path of the system) to the desktop's trash; false where that is not possible.
using Trash = std::function<bool(const QString &systemPath)>;

// The desktop's own.
bool moveToTrash(const QString &systemPath);

// Moves an app's folder to the trash, else deletes it for good; of a link only the link goes. Returns whether
// it is gone.
bool discard(const QString &systemPath, const Trash &trash);

// One change of which apps there are. It is prepared in a folder of its own beside the library, written down
// before anything is touched, and made by moving whole folders, so that whatever interrupts it leaves names
// on the disk from which the next start finishes it or takes it back: the library is the old or the new one.
//
//   <unpacking>/<id>/plan     what is meant to happen; without it everything is taken back
//   <unpacking>/<id>/new/     what an app is going to be; gone once it is the app
//   <unpacking>/<id>/record   what its package brought
//   <unpacking>/<id>/old/     the app that stood in its place, under its own name
//   <unpacking>/<id>.lock     held by the process that makes the change
class LibraryChange
{
public:
    struct Needs
    {
        const AppFolders &folders;
        AppListFile &listFile;
        Trash trash;
    };

    enum class Kind {
        Arrive, // what was prepared becomes the app `keyword`
        Rename, // `keyword` becomes `newKeyword`
        Delete, // `keyword` goes
        Edit, // a file of `keyword` is replaced
    };

    // Where an app that arrives is listed unless it is listed already.
    enum class Place { Top, End };

    struct Plan
    {
        Kind kind = Kind::Arrive;
        QString keyword = {};
        QString newKeyword = {};
        Place place = Place::End;
        QString folder = {}; // the app's, as the disk spells it; `begin` looks it up
    };

    // Nothing when the change cannot be written down, as on a full disk.
    static std::unique_ptr<LibraryChange> begin(const Needs &needs, const Plan &plan);

    // Takes everything back unless the change was made.
    ~LibraryChange();
    Q_DISABLE_COPY_MOVE(LibraryChange)

    const QString &keyword() const { return m_plan.keyword; }

    // The folder in which an app is prepared, with "\"; there from the beginning.
    QString newFolder() const;

    // The app as it was, as the system opens it, wherever it is now; empty when there was none.
    QString oldApp() const;

    // Moves the app that is there out of the library, until the new one stands or this is taken back.
    bool takeAside();

    // Each makes the change, at once or not at all. The lists and whatever else follows from it are the
    // caller's; `close` comes after them.
    bool arrive(const QByteArray &record);
    bool rename();
    bool remove();
    bool replaceFile(const QString &name, const QByteArray &content);

    // What was replaced or deleted goes to the trash, else for good. The change is over then.
    void close();

    // Finishes or takes back what a process left behind that is no more. To be called before the list is
    // read.
    static void recover(const Needs &needs);

private:
    LibraryChange(const Needs &needs, const Plan &plan, const QString &folder);

    static void recoverBelow(const QString &unpacking, const Needs &needs);
    bool start();
    void settle();
    bool wasMade() const;
    void finishList();
    void keepRecord();
    void removeRecord();
    void takeBack();
    bool readPlan();
    QString inFolder(QLatin1StringView name) const;
    QString systemFolder() const;
    QString asideApp() const;
    QString appOnDisk() const;
    QString appOnDisk(const QString &folder) const;

    Needs m;
    Plan m_plan;
    QString m_folder; // with "\"
    FileClaim m_claim;
    bool m_isOpen = false;
    bool m_isMade = false;
};

} // namespace plum
