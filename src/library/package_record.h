#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>

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

// What a package brought into an app's folder, so that an update knows the user's files from its own. Names
// are relative to the folder, with "/".
struct PackageRecord
{
    QHash<QString, FileMeasure> files;
    QSet<QString> folders;

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
};

} // namespace plum
