#pragma once

#include "library/carried_files.h"
#include "library/library_change.h"

#include <QString>

#include <functional>
#include <memory>

namespace plum {

class Paths;
class TextCodec;

// Why a package was not installed.
enum class InstallFault {
    None,
    Keyword, // no folder can have this name
    Missing, // there is no such file
    WriteProtected, // packages are opened for writing too
    NoPackage, // no archive, or one that ends before its directory
    Empty, // an archive of nothing
    Unreadable, // a file in it is encrypted or packed in an unknown way
    Misplaced, // a file in it belongs outside of the app's folder, or cannot be made there
    Damaged,
    LaterEdition, // a script in it is of an edition of the language that this Plum does not know
    NoRoom,
    NotWritable, // the library, or the app that is there, cannot be changed
};

struct InstallResult
{
    InstallFault fault = InstallFault::None;

    explicit operator bool() const { return fault == InstallFault::None; }

    // What the user is told about a failure: "Error" and, below it, why in a sentence.
    QString message() const;
};

QString installFaultText(InstallFault fault);

// Makes an app of a package: unpacks it aside, checks that all of it came out right, and moves it into place.
// Whatever fails or interrupts that leaves the library as it was. An app that it replaces goes to the trash
// as a whole; the user's files in it are in the new version as well.
class PackageInstaller
{
public:
    struct Needs
    {
        const Paths &paths;
        TextCodec &codec;
        LibraryChange::Needs changes;

        // Hears of an app before it takes its place: its keyword, and the folder of the system that it is in.
        // False: it does not.
        std::function<bool(const QString &keyword, const QString &systemFolder)> arrives = {};
    };

    explicit PackageInstaller(const Needs &needs)
        : m(needs)
    {
    }

    struct Package
    {
        QString path = {}; // full, either separator
        QString keyword = {};
        CarriedFiles carried = CarriedFiles::All; // from the app that is there
        LibraryChange::Place place = LibraryChange::Place::Top;
        std::optional<PackageOrigin> origin = {}; // of a store that signs: its package is kept
    };

    // `list` puts the new app into the lists, under the keyword that its folder has, and saves them. It is
    // called when the app stands; nothing takes it back from then on.
    InstallResult install(const Package &package, const std::function<void(const QString &keyword)> &list);

    // The version of the store that an app was before it was brought to the present one, if that can be had
    // back.
    std::optional<PackageOrigin> versionBefore(const QString &keyword) const;

    // Installs that version again; what is there now is then the one before.
    InstallResult goBack(const QString &keyword, const std::function<void(const QString &keyword)> &list);

    // Moves an app out of the library until its new version is installed or `putBack` is called; at the next
    // start it is back in any case. False when that is not possible, and the app stays where it is.
    // Without such an app there is nothing to do. One app at a time; an earlier one is put back.
    bool setAside(const QString &keyword);
    void putBack() { m_aside.reset(); }

    // Whether there is an app of this name in the library.
    bool appExists(const QString &keyword) const;

    // What every change of the library needs.
    const LibraryChange::Needs &changeNeeds() const { return m.changes; }

    // Whether this keyword's app is only out of the library for the moment.
    bool isAside(const QString &keyword) const;

private:
    InstallFault unpack(const QString &path, const QString &folder, PackageRecord &record);
    void noteOrigin(const QString &keyword, const Package &package, PackageRecord &record) const;
    void keepPackage(const QString &keyword, const Package &package, const PackageRecord &record);

    Needs m;
    std::unique_ptr<LibraryChange> m_aside;
};

} // namespace plum
