#pragma once

#include "archive/unzip.h"
#include "library/app_folders.h"

#include <QString>

#include <memory>

namespace plum {

class Paths;
class TextCodec;

// Turns a downloaded package, `<name>.wfp` in the program folder, into the app `config\apps\<name>`. Every
// step is tried, whatever became of the one before.
class PackageInstall
{
public:
    PackageInstall(const Paths &paths, TextCodec &codec)
        : m_paths(paths)
        , m_folders(paths)
        , m_codec(codec)
    {
    }

    // False when the package's SHA-256 is another one, or the package cannot be read.
    bool isGenuine(const QString &name, const QByteArray &sha256) const;

    // Unpacks the package. A new app is unpacked elsewhere first and then takes its place at once, so that
    // it is there as a whole or not at all; files of an app that is there are replaced one by one. False when
    // the disk is full: a new app is then not there.
    bool unpack(const QString &name);

    // Deletes the package and what a download of it may have left behind.
    void deletePackage(const QString &name) const;

    bool appExists(const QString &name) const;
    QString appFolder(const QString &name) const;

private:
    bool moveIntoPlace(const QString &from, const QString &to) const;

    const Paths &m_paths;
    AppFolders m_folders;
    TextCodec &m_codec;
    std::unique_ptr<Unzip> m_oZip;
};

} // namespace plum
