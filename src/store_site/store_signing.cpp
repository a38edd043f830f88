#include "store_signing.h"

#include "key_folder.h"
#include "signing/signers.h"
#include "store_files.h"
#include "store_site.h"

#include <QCryptographicHash>
#include <QFile>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What stands in the store's folder under the name of a signed file; empty when that cannot be read.
QByteArray contentOf(const QString &store, const QString &name)
{
    const auto file = SignedFile::parse(readFile(downloadsOf(store) + name));
    return file ? file->content : QByteArray();
}

bool writeSigned(const QString &store, const QString &name, const QByteArray &content, const SecretKey &key,
    QString &problem)
{
    return writeFile(downloadsOf(store) + name, signedBy(content, {key}).toBytes(), problem);
}

// The keys that the newest list names for what is signed every day.
struct DailyKeys
{
    RootFile root;
    SecretKey index;
    SecretKey timestamp;
};

std::optional<DailyKeys> dailyKeys(const KeyFolder &keys, QString &problem)
{
    const auto root = keys.newestRoot();
    if (!root) {
        problem = u"there is no list of keys; \"plum-store keys\" makes one"_s;
        return std::nullopt;
    }
    for (const Role role : {Role::Index, Role::Timestamp}) {
        const auto key = keys.key(role);
        if (!key || !root->keysOf(role).keys.contains(key->publicKey())) {
            problem = u"%1.key is not there, or not the one that root-%2.txt names"_s.arg(roleName(role))
                          .arg(root->version);
            return std::nullopt;
        }
    }
    return DailyKeys{*root, *keys.key(Role::Index), *keys.key(Role::Timestamp)};
}

// The index that goes out: the one of before while it says the same, is signed with the key of now and is
// good for another half of its time.
bool signIndex(
    const QString &store, StoreIndex index, const DailyKeys &keys, int days, int &version, QString &problem)
{
    const QDateTime now = momentOfFiles();
    const auto before = StoreIndex::parse(contentOf(store, indexFileName(version)));
    if (before) {
        index.version = before->version;
        index.expires = before->expires;
        const auto file = SignedFile::parse(readFile(downloadsOf(store) + indexFileName(version)));
        if (index.toJson() == before->toJson() && file && isSignedFor(*file, keys.root.index)
            && before->expires > now.addDays(days / 2))
            return true;
    }
    index.version = ++version;
    index.expires = now.addDays(days);
    return writeSigned(store, indexFileName(version), index.toJson(), keys.index, problem);
}

bool signTimestamp(const QString &store, const DailyKeys &keys, int days, int indexVersion, QString &problem)
{
    const QByteArray index = readFile(downloadsOf(store) + indexFileName(indexVersion));
    TimestampFile timestamp{.version = 1,
        .expires = QDateTime::fromSecsSinceEpoch(momentOfFiles().addDays(days).toSecsSinceEpoch(), Qt::UTC),
        .indexVersion = indexVersion,
        .indexSize = index.size(),
        .indexChecksum = QCryptographicHash::hash(index, QCryptographicHash::Sha256)};
    const auto file = SignedFile::parse(readFile(downloadsOf(store) + timestampFileName()));
    if (const auto before = file ? TimestampFile::parse(file->content) : std::nullopt) {
        timestamp.version = before->version;
        if (timestamp.toJson() == before->toJson() && isSignedFor(*file, keys.root.timestamp))
            return true;
        ++timestamp.version;
    }
    return writeSigned(store, timestampFileName(), timestamp.toJson(), keys.timestamp, problem);
}

} // namespace

bool signStore(const QString &store, const KeyFolder &keys, const SignedDays &days, QString &problem)
{
    const auto index = indexOf(store);
    if (!index) {
        problem = u"%1 holds no store; \"plum-store APPS %1\" makes one"_s.arg(store);
        return false;
    }
    const auto daily = dailyKeys(keys, problem);
    if (!daily)
        return false;
    for (int version = 1; version <= daily->root.version; ++version) {
        if (!writeFile(downloadsOf(store) + rootFileName(version), keys.rootBytes(version), problem))
            return false;
    }
    const auto before = TimestampFile::parse(contentOf(store, timestampFileName()));
    int version = before ? before->indexVersion : 0;
    if (!signIndex(store, *index, *daily, days.index, version, problem)
        || !signTimestamp(store, *daily, days.timestamp, version, problem))
        return false;
    // Whoever has the timestamp of before may still be on the way to its index.
    for (int old = version - 2; old > 0 && QFile::remove(downloadsOf(store) + indexFileName(old)); --old) { }
    return true;
}

bool takeBack(const QString &store, const QString &name, const QString &version, const QString &reason,
    QString &problem)
{
    auto index = indexOf(store);
    if (!index) {
        problem = u"%1 holds no store"_s.arg(store);
        return false;
    }
    const IndexedPackage *package = version.isEmpty() ? index->newest(name) : nullptr;
    for (const auto *list : {&index->packages, &index->older}) {
        for (const IndexedPackage &each : *list) {
            if (each.name == name && each.version == version)
                package = &each;
        }
    }
    if (package == nullptr) {
        problem = version.isEmpty() ? u"the store has no %1"_s.arg(name)
                                    : u"the store has no version %2 of %1"_s.arg(name, version);
        return false;
    }
    if (index->revocationOf(package->checksum) == nullptr)
        index->revoked.push_back({package->checksum, reason});
    return writeFile(downloadsOf(store) + unsignedIndexFile, index->toJson(), problem);
}

} // namespace plum
