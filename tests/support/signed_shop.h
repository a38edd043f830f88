#pragma once

#include "archive/zip_writer.h"
#include "signing/signers.h"
#include "store_index/store_index.h"

#include <QCryptographicHash>
#include <QHash>

namespace plum::test {

inline QByteArray sha256(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

// A store whose keys a test holds: what it signs is right, until the test makes it wrong.
class SignedShop
{
public:
    SignedShop()
        : root{RootFile{.version = 1,
            .expires = in(365),
            .root = {{rootKey.publicKey()}, 1},
            .index = {{indexKey.publicKey()}, 1},
            .timestamp = {{timestampKey.publicKey()}, 1}}}
    {
        signRoot({rootKey});
    }

    static QDateTime in(int days)
    {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        return QDateTime(now.date(), QTime(now.time().hour(), 0), Qt::UTC).addDays(days);
    }

    static QByteArray packed(const QByteArray &script)
    {
        ZipWriter archive;
        archive.add(QStringLiteral("main.wf"), script, QDateTime(QDate(2026, 1, 1), QTime(0, 0)));
        return archive.finish();
    }

    // The newest version of a package; it is there with the next `publish`.
    void put(const QString &name, const QByteArray &script, const QString &version = QStringLiteral("1"))
    {
        const QByteArray package = packed(script);
        const QString path = name + QStringLiteral(".wfp");
        std::erase_if(index.packages, [&](const IndexedPackage &each) { return each.name == name; });
        index.packages.push_back({.name = name,
            .version = version,
            .path = path,
            .size = package.size(),
            .checksum = sha256(package)});
        files[path] = package;
    }

    // A new index and a timestamp that names it, signed with the keys of now.
    void publish()
    {
        ++index.version;
        index.expires = in(90);
        signIndex();
        signTimestamp();
    }

    void signRoot(const std::vector<SecretKey> &keys)
    {
        files[rootFileName(root.version)] = signedBy(root.toJson(), keys).toBytes();
    }
    void signIndex() { files[indexFileName(index.version)] = signedBy(index.toJson(), {indexKey}).toBytes(); }
    void signTimestamp(int days = 7)
    {
        const QByteArray signedIndex = files[indexFileName(index.version)];
        const TimestampFile timestamp{.version = ++timestampVersion,
            .expires = in(days),
            .indexVersion = index.version,
            .indexSize = signedIndex.size(),
            .indexChecksum = sha256(signedIndex)};
        files[timestampFileName()] = signedBy(timestamp.toJson(), {timestampKey}).toBytes();
    }

    SecretKey rootKey = SecretKey::make().value();
    SecretKey indexKey = SecretKey::make().value();
    SecretKey timestampKey = SecretKey::make().value();
    RootFile root;
    StoreIndex index;
    int timestampVersion = 0;
    QHash<QString, QByteArray> files; // below the folder of the packages
};

} // namespace plum::test
