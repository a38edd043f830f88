#include "store_index/store_index.h"

#include "store_index/json_fields.h"
#include "store_index/role_files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView packageEnding(".wfp");

bool isPlain(QStringView segment)
{
    return !segment.isEmpty() && segment != "."_L1 && segment != ".."_L1
        && std::ranges::none_of(
            segment, [](QChar c) { return c == u'\\' || c.category() == QChar::Other_Control; });
}

bool isPath(const QString &path)
{
    const QStringList segments = path.split(u'/');
    return path.endsWith(packageEnding)
        && std::ranges::all_of(segments, [](const QString &each) { return isPlain(each); });
}

QJsonObject toObject(const IndexedPackage &package)
{
    QJsonObject object{{"name"_L1, package.name}, {"path"_L1, package.path}, {"size"_L1, package.size},
        {"sha256"_L1, QString::fromLatin1(package.checksum.toHex())}};
    if (!package.version.isEmpty())
        object.insert("version"_L1, package.version);
    if (package.edition != 1)
        object.insert("edition"_L1, package.edition);
    if (!package.sheet.isEmpty())
        object.insert("sheet"_L1, QJsonDocument::fromJson(package.sheet).object());
    return object;
}

std::optional<IndexedPackage> packageOf(const QJsonObject &object)
{
    const auto size = sizeField(object, "size"_L1);
    const auto checksum = checksumField(object, "sha256"_L1);
    const QString name = object.value("name"_L1).toString();
    const QString path = object.value("path"_L1).toString(name + packageEnding);
    const QJsonValue edition = object.value("edition"_L1);
    const auto numbered = countField(object, "edition"_L1);
    if (!size || !checksum || !isPlain(name) || !isPath(path) || (!edition.isUndefined() && !numbered))
        return std::nullopt;
    IndexedPackage package{.name = name,
        .version = object.value("version"_L1).toString(),
        .path = path,
        .size = *size,
        .checksum = *checksum,
        .edition = numbered.value_or(1)};
    if (const QJsonValue sheet = object.value("sheet"_L1); sheet.isObject())
        package.sheet = QJsonDocument(sheet.toObject()).toJson(QJsonDocument::Compact);
    return package;
}

QJsonArray toArray(const std::vector<IndexedPackage> &packages)
{
    QJsonArray array;
    for (const IndexedPackage &package : packages)
        array += toObject(package);
    return array;
}

// False when one of them is none, or lies where another does.
bool readPackages(const QJsonValue &value, std::vector<IndexedPackage> &packages, QSet<QString> &paths)
{
    if (!value.isArray() && !value.isUndefined())
        return false;
    const QJsonArray array = value.toArray();
    for (const auto &each : array) {
        auto package = packageOf(each.toObject());
        if (!package || paths.contains(package->path))
            return false;
        paths.insert(package->path);
        packages.push_back(std::move(*package));
    }
    return true;
}

} // namespace

const IndexedPackage *StoreIndex::packageAt(const QString &path) const
{
    for (const auto *list : {&packages, &older}) {
        const auto found = std::ranges::find(*list, path, &IndexedPackage::path);
        if (found != list->end())
            return &*found;
    }
    return nullptr;
}

const IndexedPackage *StoreIndex::newest(const QString &name) const
{
    const auto found = std::ranges::find(packages, name, &IndexedPackage::name);
    return found == packages.end() ? nullptr : &*found;
}

const Revocation *StoreIndex::revocationOf(const QByteArray &checksum) const
{
    const auto found = std::ranges::find(revoked, checksum, &Revocation::checksum);
    return found == revoked.end() ? nullptr : &*found;
}

QByteArray StoreIndex::toJson() const
{
    QJsonArray revocations;
    for (const Revocation &each : revoked) {
        revocations += QJsonObject{
            {"sha256"_L1, QString::fromLatin1(each.checksum.toHex())}, {"reason"_L1, each.reason}};
    }
    QJsonObject object{{"type"_L1, roleName(Role::Index)}, {"packages"_L1, toArray(packages)},
        {"older"_L1, toArray(older)}, {"revoked"_L1, revocations}};
    if (version != 0) {
        object.insert("version"_L1, version);
        object.insert("expires"_L1, momentText(expires));
    }
    return fileText(object);
}

std::optional<StoreIndex> StoreIndex::parse(const QByteArray &json)
{
    const auto object = objectOfType(json, roleName(Role::Index));
    if (!object)
        return std::nullopt;
    StoreIndex index;
    if (object->contains("version"_L1) || object->contains("expires"_L1)) {
        const auto number = countField(*object, "version"_L1);
        const auto end = momentField(*object, "expires"_L1);
        if (!number || !end)
            return std::nullopt;
        index.version = *number;
        index.expires = *end;
    }
    QSet<QString> paths;
    if (!object->value("packages"_L1).isArray()
        || !readPackages(object->value("packages"_L1), index.packages, paths)
        || !readPackages(object->value("older"_L1), index.older, paths))
        return std::nullopt;
    const QJsonArray revocations = object->value("revoked"_L1).toArray();
    for (const auto &each : revocations) {
        const auto checksum = checksumField(each.toObject(), "sha256"_L1);
        if (!checksum)
            return std::nullopt;
        index.revoked.push_back({*checksum, each.toObject().value("reason"_L1).toString()});
    }
    return index;
}

} // namespace plum
