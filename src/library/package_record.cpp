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
    return QJsonDocument(QJsonObject{{filesKey, filesObject}, {foldersKey, folderNames}}).toJson();
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
    for (const QJsonValue &name : folderNames)
        record.folders.insert(name.toString());
    return record;
}

QString PackageRecord::fileOf(const QString &keyword, const AppFolders &folders)
{
    const QByteArray name = QCryptographicHash::hash(keyword.toUtf8(), QCryptographicHash::Sha1).toHex();
    return folders.onDisk(folders.packageRecords() + u'\\' + QString::fromLatin1(name) + u".json"_s);
}

PackageRecord PackageRecord::of(const QString &keyword, const AppFolders &folders)
{
    QFile file(fileOf(keyword, folders));
    return file.open(QIODevice::ReadOnly) ? fromJson(file.readAll()) : PackageRecord();
}

} // namespace plum
