#include "key_folder.h"

#include "signing/signers.h"
#include "store_files.h"

#include <QFile>

#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array roles{Role::Root, Role::Index, Role::Timestamp};
constexpr int rootYears = 5; // how long a list of keys is good

QString keyFile(Role role)
{
    return roleName(role) + ".key"_L1;
}

QString oldKeyFile(Role role, int version)
{
    return u"%1-%2.key"_s.arg(roleName(role)).arg(version);
}

QString rootFile(int version)
{
    return rootFileName(version).section(u'/', -1);
}

} // namespace

bool KeyFolder::writeKey(const QString &name, const SecretKey &key, QString &problem) const
{
    QFile file(path(name));
    const QByteArray line = key.toHex() + '\n';
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)
        && file.write(line) == line.size() && file.flush())
        return true;
    problem = u"%1: %2"_s.arg(file.fileName(), file.errorString());
    return false;
}

bool KeyFolder::writeRoot(const RootFile &root, const std::vector<SecretKey> &signers, QString &problem) const
{
    return writeFile(path(rootFile(root.version)), signedBy(root.toJson(), signers).toBytes(), problem);
}

bool KeyFolder::make(QString &problem) const
{
    if (m_folder.exists() && !m_folder.isEmpty()) {
        problem = u"%1 is there already; a key that is written over is lost"_s.arg(m_folder.path());
        return false;
    }
    if (!QDir().mkpath(m_folder.path())) {
        problem = u"%1 cannot be made"_s.arg(m_folder.path());
        return false;
    }
    QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    RootFile root{.expires = momentOfFiles().addYears(rootYears), .root = {}, .index = {}, .timestamp = {}};
    for (const Role role : roles) {
        const auto secret = SecretKey::make();
        if (!secret || !writeKey(keyFile(role), *secret, problem))
            return false;
        root.keysOf(role) = {{secret->publicKey()}, 1};
    }
    return writeRoot(root, {*key(Role::Root)}, problem);
}

bool KeyFolder::rotate(Role role, QString &problem) const
{
    auto root = newestRoot();
    const auto rootKey = key(Role::Root);
    const auto secret = SecretKey::make();
    if (!root || !rootKey || !root->root.keys.contains(rootKey->publicKey())) {
        problem = u"%1: a new list of keys takes the newest one and its root.key"_s.arg(m_folder.path());
        return false;
    }
    const QString old = path(oldKeyFile(role, root->version));
    if (key(role) && !QFile::rename(path(keyFile(role)), old)) {
        problem = u"%1 cannot be written"_s.arg(old);
        return false;
    }
    if (!secret || !writeKey(keyFile(role), *secret, problem))
        return false;
    ++root->version;
    root->expires = momentOfFiles().addYears(rootYears);
    root->keysOf(role) = {{secret->publicKey()}, 1};
    std::vector<SecretKey> signers{*rootKey};
    if (role == Role::Root)
        signers.push_back(*secret);
    return writeRoot(*root, signers, problem);
}

std::optional<SecretKey> KeyFolder::key(Role role) const
{
    return SecretKey::fromHex(readFile(path(keyFile(role))).trimmed());
}

QByteArray KeyFolder::rootBytes(int version) const
{
    return readFile(path(rootFile(version)));
}

std::optional<RootFile> KeyFolder::newestRoot() const
{
    int version = 1;
    while (m_folder.exists(rootFile(version + 1)))
        ++version;
    const auto file = SignedFile::parse(rootBytes(version));
    return file ? RootFile::parse(file->content) : std::nullopt;
}

} // namespace plum
