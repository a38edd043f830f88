#include "library/package_record.h"

#include "archive/zip_writer.h"
#include "library/app_folders.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pieceSize = 1 << 20; // bytes

constexpr QLatin1StringView filesKey("files");
constexpr QLatin1StringView foldersKey("folders");
constexpr QLatin1StringView sizeKey("size");
constexpr QLatin1StringView crcKey("crc32");
constexpr QLatin1StringView originKey("origin");
constexpr QLatin1StringView beforeKey("before");

constexpr QLatin1StringView recordEnding(".json");
constexpr QLatin1StringView packageEnding(".wfp");
constexpr QLatin1StringView beforeEnding(".before.wfp");

QString fileNamed(const QString &keyword, QLatin1StringView ending, const AppFolders &folders)
{
    const QByteArray name = QCryptographicHash::hash(keyword.toUtf8(), QCryptographicHash::Sha1).toHex();
    return folders.packageRecords() + u'\\' + QString::fromLatin1(name) + ending;
}

QJsonObject toObject(const PackageOrigin &origin)
{
    return {{"path"_L1, origin.path}, {"version"_L1, origin.version},
        {"sha256"_L1, QString::fromLatin1(origin.checksum.toHex())},
        {"sheet"_L1, QString::fromUtf8(origin.sheet)}};
}

std::optional<PackageOrigin> originOf(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    return PackageOrigin{.path = object.value("path"_L1).toString(),
        .version = object.value("version"_L1).toString(),
        .checksum = QByteArray::fromHex(object.value("sha256"_L1).toString().toLatin1()),
        .sheet = object.value("sheet"_L1).toString().toUtf8()};
}

} // namespace

std::optional<FileMeasure> measureFile(const QString &systemPath)
{
    QFile file(systemPath);
    // Opening anything but a file could wait for ever (a pipe).
    if (!QFileInfo(systemPath).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    FileMeasure measure;
    QByteArray piece(std::min(pieceSize, file.size() + 1), Qt::Uninitialized);
    for (;;) {
        const qint64 got = file.read(piece.data(), piece.size());
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            return measure;
        measure.size += got;
        measure.crc = crc32(QByteArrayView(piece).first(got), measure.crc);
    }
}

bool PackageRecord::isUnchanged(const QString &name, const QString &systemPath) const
{
    const auto known = files.constFind(name);
    return known != files.constEnd() && QFileInfo(systemPath).size() == known->size
        && measureFile(systemPath) == *known;
}

QByteArray PackageRecord::toJson() const
{
    QJsonObject filesObject;
    for (auto each = files.cbegin(); each != files.cend(); ++each)
        filesObject.insert(
            each.key(), QJsonObject{{sizeKey, each->size}, {crcKey, static_cast<qint64>(each->crc)}});
    QJsonArray folderNames;
    for (const QString &name : folders)
        folderNames.append(name);
    QJsonObject whole{{filesKey, filesObject}, {foldersKey, folderNames}};
    if (origin)
        whole.insert(originKey, toObject(*origin));
    if (before)
        whole.insert(beforeKey, toObject(*before));
    return QJsonDocument(whole).toJson();
}

PackageRecord PackageRecord::fromJson(const QByteArray &json)
{
    const QJsonObject whole = QJsonDocument::fromJson(json).object();
    PackageRecord record;
    const QJsonObject filesObject = whole.value(filesKey).toObject();
    for (auto each = filesObject.begin(); each != filesObject.end(); ++each) {
        const QJsonObject measure = each.value().toObject();
        record.files.insert(each.key(),
            {measure.value(sizeKey).toInteger(), static_cast<quint32>(measure.value(crcKey).toInteger())});
    }
    const QJsonArray folderNames = whole.value(foldersKey).toArray();
    for (const auto &name : folderNames)
        record.folders.insert(name.toString());
    record.origin = originOf(whole.value(originKey));
    record.before = originOf(whole.value(beforeKey));
    return record;
}

QString PackageRecord::fileOf(const QString &keyword, const AppFolders &folders)
{
    return folders.onDisk(fileNamed(keyword, recordEnding, folders));
}

QString PackageRecord::packageOf(const QString &keyword, const AppFolders &folders)
{
    return fileNamed(keyword, packageEnding, folders);
}

QString PackageRecord::packageBefore(const QString &keyword, const AppFolders &folders)
{
    return fileNamed(keyword, beforeEnding, folders);
}

QStringList PackageRecord::allFilesOf(const QString &keyword, const AppFolders &folders)
{
    return {fileOf(keyword, folders), folders.onDisk(packageOf(keyword, folders)),
        folders.onDisk(packageBefore(keyword, folders))};
}

PackageRecord PackageRecord::of(const QString &keyword, const AppFolders &folders)
{
    QFile file(fileOf(keyword, folders));
    return file.open(QIODevice::ReadOnly) ? fromJson(file.readAll()) : PackageRecord();
}

} // namespace plum
