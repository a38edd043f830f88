#include "library/package_index.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace plum {

using namespace Qt::StringLiterals;

std::optional<QByteArray> packageChecksum(QByteArrayView index, const QString &name)
{
    const QJsonArray packages
        = QJsonDocument::fromJson(index.toByteArray()).object().value("packages"_L1).toArray();
    for (const QJsonValue &value : packages) {
        const QJsonObject package = value.toObject();
        if (package.value("name"_L1).toString() != name)
            continue;
        const QByteArray checksum = QByteArray::fromHex(package.value("sha256"_L1).toString().toLatin1());
        if (checksum.size() == QCryptographicHash::hashLength(QCryptographicHash::Sha256))
            return checksum;
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
