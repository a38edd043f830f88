#pragma once

#include "signing/ed25519.h"
#include "store_index/role_files.h"
#include "store_index/signed_file.h"

#include <QDir>
#include <QString>

#include <optional>

namespace plum {

// The folder in which the owner of a store keeps its keys, away from the store: a file with the secret of
// each role, and every list of keys so far.
//
//   root.key index.key timestamp.key     64 hexadecimal digits each, readable for the owner alone
//   root-1.txt root-2.txt ...            the lists, signed; what the store hands out
class KeyFolder
{
public:
    explicit KeyFolder(const QString &path)
        : m_folder(path)
    {
    }

    // Makes the folder with a key for each role and the first list. False, with a `problem`, when there is
    // one.
    bool make(QString &problem) const;

    // Gives a role a new key, in a new list that the keys of before vouch for. The old key stays aside, under
    // the number of the last list that names it. A new list also lives anew.
    bool rotate(Role role, QString &problem) const;

    // The key of a role, if it is here; that of the root is needed for new lists alone.
    std::optional<SecretKey> key(Role role) const;

    // The newest list, as it is signed, and what it says. Nothing when there is none that can be read.
    std::optional<RootFile> newestRoot() const;
    QByteArray rootBytes(int version) const;

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    bool writeKey(const QString &name, const SecretKey &key, QString &problem) const;
    bool writeRoot(const RootFile &root, const std::vector<SecretKey> &signers, QString &problem) const;

    QDir m_folder;
};

} // namespace plum
