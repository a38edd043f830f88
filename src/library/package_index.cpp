#include "library/package_index.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What the index says of the packages of that name; one, unless it is damaged.
QList<QJsonObject> packagesNamed(QByteArrayView index, const QString &name)
{
    QList<QJsonObject> named;
    const QJsonArray packages
        = QJsonDocument::fromJson(index.toByteArray()).object().value("packages"_L1).toArray();
    for (const QJsonValue &value : packages) {
        if (const QJsonObject package = value.toObject(); package.value("name"_L1).toString() == name)
            named += package;
    }
    return named;
}

} // namespace

std::optional<QByteArray> packageChecksum(QByteArrayView index, const QString &name)
{
    for (const QJsonObject &package : packagesNamed(index, name)) {
        const QByteArray checksum = QByteArray::fromHex(package.value("sha256"_L1).toString().toLatin1());
        if (checksum.size() == QCryptographicHash::hashLength(QCryptographicHash::Sha256))
            return checksum;
    }
    return std::nullopt;
}

std::optional<qint64> packageSize(QByteArrayView index, const QString &name)
{
    for (const QJsonObject &package : packagesNamed(index, name)) {
        if (const qint64 size = package.value("size"_L1).toInteger(); size > 0)
            return size;
    }
    return std::nullopt;
}

std::optional<QByteArray> fileChecksum(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return std::nullopt;
    return hash.result();
}

} // namespace plum
