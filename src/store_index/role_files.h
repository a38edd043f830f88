#pragma once

#include "store_index/public_key.h"

#include <QDateTime>

#include <optional>
#include <set>

namespace plum {

// What a key of a store can be for.
enum class Role {
    Root, // says which keys the store has
    Index, // says which packages the store has
    Timestamp, // says which index is the newest
};

QLatin1StringView roleName(Role role); // "root", "index", "timestamp"
std::optional<Role> roleNamed(QStringView name);

// Who may sign for a role: that many of these keys.
struct RoleKeys
{
    std::set<PublicKey> keys;
    int threshold = 1; // from 1 to the number of keys

    bool operator==(const RoleKeys &) const = default;
};

// Which keys a store has. A new version is signed by its own root keys and by those of the version before.
struct RootFile
{
    int version = 1;
    QDateTime expires;
    RoleKeys root;
    RoleKeys index;
    RoleKeys timestamp;

    const RoleKeys &keysOf(Role role) const;
    RoleKeys &keysOf(Role role);

    QByteArray toJson() const;
    static std::optional<RootFile> parse(const QByteArray &json);
};

// Which index is the store's newest; valid for days only, so that a mirror cannot show an old one for long.
struct TimestampFile
{
    int version = 1;
    QDateTime expires;
    int indexVersion = 1;
    qint64 indexSize = 0; // bytes of the signed file
    QByteArray indexChecksum; // SHA-256 of the signed file

    QByteArray toJson() const;
    static std::optional<TimestampFile> parse(const QByteArray &json);
};

// The names of the signed files, below the folder of the packages.
QString rootFileName(int version);
QString indexFileName(int version);
QString timestampFileName();

} // namespace plum
