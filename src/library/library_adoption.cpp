#include "library/library_adoption.h"

#include "library/app_list_file.h"
#include "library/carried_files.h"
#include "library/grant_file.h"
#include "library/package_record.h"
#include "library/safe_file.h"
#include "platform/paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The settings of a user. The order of the apps is merged; who holds a claim or asked for something is over.
constexpr std::array settingsFiles{QLatin1StringView("set.ini"), QLatin1StringView("options.ini")};

// A library at any place, read by the rules of this system.
class PathsOf final : public Paths
{
public:
    PathsOf(QString folder, const Paths &system)
        : m_folder(std::move(folder))
        , m_system(system)
    {
    }

    QString programFolder() const override { return m_folder; }
    QString toSystem(const QString &path) const override { return m_system.toSystem(path); }
    bool interpretsNames() const override { return m_system.interpretsNames(); }

private:
    QString m_folder;
    const Paths &m_system;
};

// The names of everything below a folder, with "/" between folders.
QStringList namesBelow(const QString &folder)
{
    QStringList names;
    QDirIterator below(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (below.hasNext())
        names += QDir(folder).relativeFilePath(below.next());
    names.sort();
    return names;
}

bool isSameFile(const QString &one, const QString &other)
{
    const QFileInfo a(one);
    const QFileInfo b(other);
    if (a.isSymLink() || b.isSymLink())
        return a.symLinkTarget() == b.symLinkTarget();
    if (a.isDir() || b.isDir())
        return a.isDir() && b.isDir();
    const std::optional<FileMeasure> measure = measureFile(one);
    return measure && measure == measureFile(other);
}

bool isSameFolder(const QString &one, const QString &other)
{
    const QStringList names = namesBelow(one);
    return names == namesBelow(other) && std::ranges::all_of(names, [&](const QString &name) {
        return isSameFile(one + u'/' + name, other + u'/' + name);
    });
}

bool copyBelow(const QString &from, const QString &to)
{
    PackageRecord none;
    return carryOver(from, to, {}, CarriedFiles::All, none) == CarryOutcome::Done;
}

bool copyIfThere(const QString &from, const QString &to)
{
    if (!QFile::exists(from))
        return true;
    QFile::remove(to); // of an app that somebody deleted by hand
    return QDir().mkpath(QFileInfo(to).path()) && QFile::copy(from, to);
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class LibraryAdoption::Source
{
public:
    Source(const QString &systemFolder, const Paths &system)
        : paths(systemFolder, system)
        , folders(paths)
        , grants(paths)
    {
    }

    const PathsOf paths;
    const AppFolders folders;
    const GrantFile grants;
};

std::optional<LibraryAdoption::Outcome> LibraryAdoption::adopt(const QString &systemFolder) const
{
    const Source source(QDir(systemFolder).absolutePath(), m.paths);
    const QString apps = QFileInfo(source.folders.onDisk(source.folders.apps())).canonicalFilePath();
    const AppFolders &own = m.changes.folders;
    if (apps.isEmpty() || apps == QFileInfo(own.onDisk(own.apps())).canonicalFilePath())
        return {};

    // What an earlier change has left half done is no part of the library.
    LibraryChange::recover(m.changes);
    QDir().mkpath(own.onDisk(own.apps()));
    Outcome outcome;
    QStringList keywords = AppListFile(source.paths, m.codec).load();
    QStringList found;
    ListSubfolders(found, source.folders.apps(), source.paths);
    for (const QString &keyword : std::as_const(found)) {
        if (!keywords.contains(keyword))
            keywords += keyword;
    }
    for (const QString &keyword : std::as_const(keywords)) {
        // The list may name apps that are no more.
        if (found.contains(keyword) && AppFolders::isApp(keyword) && !adoptApp(keyword, source, outcome))
            outcome.failed += keyword;
    }
    for (const QLatin1StringView name : settingsFiles) {
        if (!adoptSettings(name, source, outcome))
            outcome.failed += name;
    }
    if (!adoptSettings(u"store"_s, source, outcome))
        outcome.failed += u"store"_s;
    return outcome;
}

bool LibraryAdoption::adoptApp(const QString &keyword, const Source &source, Outcome &outcome) const
{
    const AppFolders &own = m.changes.folders;
    const std::optional<QString> from = source.folders.appOnDisk(keyword);
    if (!from)
        return false;
    if (const auto here = own.appOnDisk(keyword); here && isSameFolder(*from, *here)) {
        outcome.present += keyword;
        return true;
    }
    const QString name = freeKeyword(keyword);
    const auto change
        = LibraryChange::begin(m.changes, {.kind = LibraryChange::Kind::Arrive, .keyword = name});
    if (!change || !copyBelow(*from, own.onDisk(change->newFolder())))
        return false;
    // Before the app stands: without its grant it would be one that nothing limits.
    const std::optional<Grant> grant = source.grants.of(keyword);
    const GrantFile grants(m.paths);
    if (grant ? !grants.set(name, *grant) : !grants.remove(name))
        return false;
    const auto package = [&](QString (*fileOf)(const QString &, const AppFolders &)) {
        return copyIfThere(
            source.folders.onDisk(fileOf(keyword, source.folders)), own.onDisk(fileOf(name, own)));
    };
    if (!package(&PackageRecord::packageOf) || !package(&PackageRecord::packageBefore)
        || !change->arrive(bytesOf(PackageRecord::fileOf(keyword, source.folders))))
        return false;
    QStringList listed = m.changes.listFile.load();
    if (!listed.contains(name))
        listed += name;
    m.changes.listFile.ConfigSave(listed);
    change->close();
    outcome.apps += name == keyword ? keyword : u"%1 as %2"_s.arg(keyword, name);
    return true;
}

bool LibraryAdoption::adoptSettings(const QString &name, const Source &source, Outcome &outcome) const
{
    const AppFolders &own = m.changes.folders;
    const QFileInfo from(source.folders.onDisk(source.folders.loadFile(name)));
    const QString to = own.onDisk(own.loadFile(name));
    if (!from.exists())
        return true;
    if (QFileInfo::exists(to)) {
        outcome.keptSettings += name;
        return true;
    }
    const bool isCopied = QDir().mkpath(QFileInfo(to).path())
        && (from.isDir() ? QDir().mkpath(to) && copyBelow(from.filePath(), to)
                         : replaceFile(to, bytesOf(from.filePath())));
    if (isCopied)
        outcome.settings += name;
    return isCopied;
}

QString LibraryAdoption::freeKeyword(const QString &keyword) const
{
    const AppFolders &own = m.changes.folders;
    const auto isFree = [&](const QString &name) {
        return !QFileInfo::exists(own.onDisk(own.app(name)))
            && !QFileInfo(own.onDisk(own.app(name))).isSymLink();
    };
    if (isFree(keyword))
        return keyword;
    int number = 2;
    const auto numbered = [&] { return u"%1-%2"_s.arg(keyword).arg(number); };
    while (!isFree(numbered()))
        ++number;
    return numbered();
}

} // namespace plum
