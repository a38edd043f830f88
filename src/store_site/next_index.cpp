#include "next_index.h"

#include "store/protocol/package_link.h"

#include <QCryptographicHash>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString pathOfOlder(const IndexedPackage &package)
{
    return u"older/%1/%2/%1"_s.arg(package.name, package.version) + packageEnding;
}

// The version that an app gets when nobody has given it one.
QString versionAfter(const IndexedPackage *before)
{
    return QString::number(before == nullptr ? 1 : before->version.toInt() + 1);
}

bool hasVersion(const StoreIndex &index, const QString &name, const QString &version)
{
    return std::ranges::any_of(index.older,
        [&](const IndexedPackage &each) { return each.name == name && each.version == version; });
}

IndexedPackage rowOf(const PublishedApp &app)
{
    return {.name = app.name,
        .version = app.version,
        .path = app.name + packageEnding,
        .size = app.package.content.size(),
        .checksum = app.checksum,
        .edition = app.edition,
        .sheet = app.sheet};
}

// Moves the newest version of before to where older ones are.
void keepAsOlder(IndexedPackage package, const QByteArray &bytes, NextIndex &next)
{
    const QString place = package.path;
    if (package.version.isEmpty() || bytes.size() != package.size
        || QCryptographicHash::hash(bytes, QCryptographicHash::Sha256) != package.checksum) {
        next.problems
            += u"%1: the package from before is not the one that the index names; it is not kept"_s.arg(
                place);
        return;
    }
    package.path = pathOfOlder(package);
    next.files.emplace_back(package.path, bytes);
    next.index.older.insert(next.index.older.begin(), std::move(package));
}

} // namespace

NextIndex nextIndex(const StoreIndex &before, std::vector<PublishedApp> &apps, const QStringList &unpublished,
    const std::function<QByteArray(const QString &path)> &packageAt)
{
    NextIndex next;
    next.index.older = before.older;
    next.index.revoked = before.revoked;
    QStringList staying = unpublished;

    std::erase_if(apps, [&](PublishedApp &app) {
        const IndexedPackage *last = before.newest(app.name);
        if (last != nullptr && last->checksum == app.checksum
            && (app.version.isEmpty() || app.version == last->version)) {
            app.version = last->version;
        } else if (app.version.isEmpty()) {
            app.version = versionAfter(last);
            while (hasVersion(before, app.name, app.version))
                app.version = QString::number(app.version.toInt() + 1);
        } else if ((last != nullptr && last->version == app.version)
            || hasVersion(before, app.name, app.version)) {
            next.problems
                += u"%1: something is different, and there is a version %2 already; give it another "
                   "\"version\" in about.json"_s.arg(app.name, app.version);
            staying += app.name;
            return true;
        }
        return false;
    });

    for (const PublishedApp &app : apps) {
        const IndexedPackage *last = before.newest(app.name);
        if (last != nullptr && last->checksum != app.checksum)
            keepAsOlder(*last, packageAt(last->path), next);
        next.index.packages.push_back(rowOf(app));
    }
    for (const IndexedPackage &package : before.packages) {
        if (std::ranges::count(apps, package.name, &PublishedApp::name) != 0)
            continue;
        if (staying.contains(package.name)) {
            next.index.packages.push_back(package);
            continue;
        }
        keepAsOlder(package, packageAt(package.path), next);
        next.withdrawn += package.path;
    }
    std::ranges::sort(next.index.packages, {}, &IndexedPackage::name);
    return next;
}

} // namespace plum
