#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace plum {

class AppFolders;

// Length and checksum of a file.
struct FileMeasure
{
    qint64 size = 0; // bytes
    quint32 crc = 0; // CRC-32

    bool operator==(const FileMeasure &) const = default;
};

// Nothing when the file at `systemPath` cannot be read.
std::optional<FileMeasure> measureFile(const QString &systemPath);

// Which version of which package of the store an app is.
struct PackageOrigin
{
    QString path; // below the store's folder of packages
    QString version = {};
    QByteArray checksum = {}; // SHA-256 of the package
    QByteArray sheet = {}; // what the index said that it may do

    bool operator==(const PackageOrigin &) const = default;
};

// What a package brought into an app's folder, so that an update knows the user's files from its own. Names
// are relative to the folder, with "/".
struct PackageRecord
{
    QHash<QString, FileMeasure> files;
    QSet<QString> folders;
    std::optional<PackageOrigin> origin = {}; // nothing for an app that is not from a store that signs
    std::optional<PackageOrigin> before = {}; // the version that it was in the place of

    // Whether the file is still the one that the package brought. What a script has written into it since
    // makes it the user's.
    bool isUnchanged(const QString &name, const QString &systemPath) const;

    QByteArray toJson() const;
    static PackageRecord fromJson(const QByteArray &json);

    // The record of an app that is installed; an empty one where nothing was recorded.
    static PackageRecord of(const QString &keyword, const AppFolders &folders);

    // The file in which the record of an app is kept, as the system opens it. Its name is made from the
    // keyword, which may be as long as a file's name can be.
    static QString fileOf(const QString &keyword, const AppFolders &folders);

    // Where the package of the version that an app is, and of the one before, are kept, with "\\".
    static QString packageOf(const QString &keyword, const AppFolders &folders);
    static QString packageBefore(const QString &keyword, const AppFolders &folders);

    // All of these files of an app, as the system opens them; in the same order for every app.
    static QStringList allFilesOf(const QString &keyword, const AppFolders &folders);
};

} // namespace plum
