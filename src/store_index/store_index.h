#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace plum {

// One version of a package, as the store's index names it.
struct IndexedPackage
{
    QString name; // the keyword that it usually gets
    QString version = {};
    QString path = {}; // of the archive, below the folder of the packages, with "/"
    qint64 size = 0; // bytes
    QByteArray checksum = {}; // SHA-256
    int edition = 1; // of the language: the highest that its scripts ask for
    QByteArray sheet = {}; // what the app may do, as JSON text; empty where the index does not say
};

// A version of a package that the store has taken back, wherever it lies.
struct Revocation
{
    QByteArray checksum; // SHA-256 of the archive
    QString reason = {}; // a sentence
};

// What a store has. An index that nobody signed has neither version nor end.
struct StoreIndex
{
    int version = 0;
    QDateTime expires = {};
    std::vector<IndexedPackage> packages = {}; // the newest version of each
    std::vector<IndexedPackage> older = {}; // the newest first
    std::vector<Revocation> revoked = {};

    // The package that lies at this path; nothing when the index names none there.
    const IndexedPackage *packageAt(const QString &path) const;
    // The newest version of the package with this name.
    const IndexedPackage *newest(const QString &name) const;
    const Revocation *revocationOf(const QByteArray &checksum) const;

    QByteArray toJson() const;

    // Nothing when a field is missing or wrong, or two packages lie at one path.
    static std::optional<StoreIndex> parse(const QByteArray &json);
};

} // namespace plum
