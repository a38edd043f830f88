#include "store_index/role_files.h"

#include "store_index/json_fields.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct RoleName
{
    Role role;
    QLatin1StringView name;
};

constexpr std::array roleNames{
    RoleName{Role::Root, QLatin1StringView("root")},
    RoleName{Role::Index, QLatin1StringView("index")},
    RoleName{Role::Timestamp, QLatin1StringView("timestamp")},
};

constexpr qsizetype mostKeys = 32; // of a role

QJsonObject toObject(const RoleKeys &role)
{
    QJsonArray keys;
    for (const PublicKey &key : role.keys)
        keys += QString::fromLatin1(key.toHex());
    return {{"keys"_L1, keys}, {"threshold"_L1, role.threshold}};
}

std::optional<RoleKeys> roleKeysOf(const QJsonObject &object)
{
    const auto threshold = countField(object, "threshold"_L1);
    const QJsonArray keys = object.value("keys"_L1).toArray();
    if (!threshold || keys.size() > mostKeys || *threshold > keys.size())
        return std::nullopt;
    RoleKeys role;
    role.threshold = *threshold;
    for (const auto &each : keys) {
        const auto key = PublicKey::fromHex(each.toString().toLatin1());
        if (!key || !role.keys.insert(*key).second)
            return std::nullopt;
    }
    return role;
}

} // namespace

QLatin1StringView roleName(Role role)
{
    return std::ranges::find(roleNames, role, &RoleName::role)->name;
}

std::optional<Role> roleNamed(QStringView name)
{
    const auto *const found
        = std::ranges::find_if(roleNames, [&](const RoleName &each) { return each.name == name; });
    return found == roleNames.end() ? std::nullopt : std::optional(found->role);
}

const RoleKeys &RootFile::keysOf(Role role) const
{
    return role == Role::Root ? root : role == Role::Index ? index : timestamp;
}

RoleKeys &RootFile::keysOf(Role role)
{
    return role == Role::Root ? root : role == Role::Index ? index : timestamp;
}

QByteArray RootFile::toJson() const
{
    QJsonObject roles;
    for (const RoleName &each : roleNames)
        roles.insert(each.name, toObject(keysOf(each.role)));
    return fileText({{"type"_L1, roleName(Role::Root)}, {"version"_L1, version},
        {"expires"_L1, momentText(expires)}, {"roles"_L1, roles}});
}

std::optional<RootFile> RootFile::parse(const QByteArray &json)
{
    const auto object = objectOfType(json, roleName(Role::Root));
    if (!object)
        return std::nullopt;
    const auto version = countField(*object, "version"_L1);
    const auto expires = momentField(*object, "expires"_L1);
    if (!version || !expires)
        return std::nullopt;
    RootFile file;
    file.version = *version;
    file.expires = *expires;
    const QJsonObject roles = object->value("roles"_L1).toObject();
    for (const RoleName &each : roleNames) {
        const auto keys = roleKeysOf(roles.value(each.name).toObject());
        if (!keys)
            return std::nullopt;
        file.keysOf(each.role) = *keys;
    }
    return file;
}

QByteArray TimestampFile::toJson() const
{
    const QJsonObject index{{"version"_L1, indexVersion}, {"size"_L1, indexSize},
        {"sha256"_L1, QString::fromLatin1(indexChecksum.toHex())}};
    return fileText({{"type"_L1, roleName(Role::Timestamp)}, {"version"_L1, version},
        {"expires"_L1, momentText(expires)}, {"index"_L1, index}});
}

std::optional<TimestampFile> TimestampFile::parse(const QByteArray &json)
{
    const auto object = objectOfType(json, roleName(Role::Timestamp));
    if (!object)
        return std::nullopt;
    const QJsonObject index = object->value("index"_L1).toObject();
    const auto version = countField(*object, "version"_L1);
    const auto expires = momentField(*object, "expires"_L1);
    const auto indexVersion = countField(index, "version"_L1);
    const auto indexSize = sizeField(index, "size"_L1);
    const auto indexChecksum = checksumField(index, "sha256"_L1);
    if (!version || !expires || !indexVersion || !indexSize || !indexChecksum)
        return std::nullopt;
    TimestampFile file;
    file.version = *version;
    file.expires = *expires;
    file.indexVersion = *indexVersion;
    file.indexSize = *indexSize;
    file.indexChecksum = *indexChecksum;
    return file;
}

QString rootFileName(int version)
{
    return u"signed/root-%1.txt"_s.arg(version);
}

QString indexFileName(int version)
{
    return u"signed/index-%1.txt"_s.arg(version);
}

QString timestampFileName()
{
    return u"signed/timestamp.txt"_s;
}

} // namespace plum
