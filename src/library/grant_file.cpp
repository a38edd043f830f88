#include "library/grant_file.h"

#include "library/package_record.h"
#include "library/safe_file.h"
#include "platform/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView appsKey("apps");
constexpr QLatin1StringView hashKey("hash");
constexpr QLatin1StringView sheetKey("sheet");
constexpr QLatin1StringView takenBackKey("taken back");

QByteArray compact(const QJsonValue &object)
{
    return QJsonDocument(object.toObject()).toJson(QJsonDocument::Compact);
}

} // namespace

// Where letter case makes no other folder, it makes no other app.
QString GrantFile::keyOf(const QString &keyword) const
{
    return m_paths.interpretsNames() ? keyword.toCaseFolded() : keyword;
}

std::optional<Grant> GrantFile::of(const QString &keyword) const
{
    const Grants grants = read();
    const auto known = grants.constFind(keyOf(keyword));
    return known == grants.constEnd() ? std::nullopt : std::optional(*known);
}

bool GrantFile::set(const QString &keyword, const Grant &grant) const
{
    Grants grants = read();
    grants.insert(keyOf(keyword), grant);
    return write(grants);
}

bool GrantFile::remove(const QString &keyword) const
{
    Grants grants = read();
    return grants.remove(keyOf(keyword)) == 0 || write(grants);
}

GrantFile::Grants GrantFile::read() const
{
    QFile file(m_folders.onDisk(m_folders.grantsFile()));
    if (!file.exists())
        return {};
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return allTakenBack();
    const QJsonValue apps = QJsonDocument::fromJson(file.readAll()).object().value(appsKey);
    if (!apps.isObject())
        return allTakenBack();
    Grants grants;
    const QJsonObject object = apps.toObject();
    for (auto each = object.begin(); each != object.end(); ++each) {
        const QJsonObject grant = each.value().toObject();
        grants.insert(each.key(),
            {grant.value(hashKey).toString().toLatin1(), compact(grant.value(sheetKey)),
                grant.value(takenBackKey).toBool()});
    }
    return grants;
}

GrantFile::Grants GrantFile::allTakenBack() const
{
    Grants grants;
    const QStringList apps
        = QDir(m_folders.onDisk(m_folders.apps())).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &keyword : apps) {
        if (QFileInfo::exists(PackageRecord::fileOf(keyword, m_folders)))
            grants.insert(keyOf(keyword), {.isTakenBack = true});
    }
    return grants;
}

bool GrantFile::write(const Grants &grants) const
{
    QJsonObject apps;
    for (auto each = grants.begin(); each != grants.end(); ++each) {
        QJsonObject grant{{hashKey, QString::fromLatin1(each->contentHash)},
            {sheetKey, QJsonDocument::fromJson(each->sheet).object()}};
        if (each->isTakenBack)
            grant.insert(takenBackKey, true);
        apps.insert(each.key(), grant);
    }
    return replaceFile(
        m_folders.onDisk(m_folders.grantsFile()), QJsonDocument(QJsonObject{{appsKey, apps}}).toJson());
}

} // namespace plum
