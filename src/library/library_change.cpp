#include "library/library_change.h"

#include "library/app_folders.h"
#include "library/app_list_file.h"
#include "library/app_lists.h"
#include "library/package_record.h"
#include "library/safe_file.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QStorageInfo>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView planFile("plan");
constexpr QLatin1StringView recordFile("record");
constexpr QLatin1StringView newName("new");
constexpr QLatin1StringView oldName("old");
constexpr QLatin1StringView claimEnding(".lock");

// A claim without its folder may be that of a change which begins at this moment.
constexpr qint64 claimPatience = 60; // seconds

struct KindName
{
    LibraryChange::Kind kind;
    QLatin1StringView name;
};

constexpr std::array kindNames{
    KindName{LibraryChange::Kind::Arrive, QLatin1StringView("arrive")},
    KindName{LibraryChange::Kind::Rename, QLatin1StringView("rename")},
    KindName{LibraryChange::Kind::Delete, QLatin1StringView("delete")},
    KindName{LibraryChange::Kind::Edit, QLatin1StringView("edit")},
};

bool isThere(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

QStringList everythingIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

// Folders can be moved into the library from here: the same file system has both.
QString unpackingFolder(const AppFolders &folders)
{
    const QString beside = folders.onDisk(folders.unpacking());
    const QString apps = folders.onDisk(folders.apps());
    if (!QDir().mkpath(apps) || !QDir().mkpath(beside))
        return {};
    if (QStorageInfo(beside).rootPath() == QStorageInfo(apps).rootPath())
        return folders.unpacking();
    QDir().rmdir(beside);
    return QDir().mkpath(folders.onDisk(folders.unpackingInApps())) ? folders.unpackingInApps() : QString();
}

void deleteFolder(const QString &path)
{
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);
    else
        QDir(path).removeRecursively();
}

} // namespace

bool discard(const QString &systemPath, const Trash &trash)
{
    if (QFileInfo(systemPath).isSymLink() || !trash(systemPath))
        deleteFolder(systemPath);
    return !isThere(systemPath);
}

bool moveToTrash(const QString &systemPath)
{
    return QFile::moveToTrash(systemPath);
}

LibraryChange::LibraryChange(const Needs &needs, const Plan &plan, const QString &folder)
    : m(needs)
    , m_plan(plan)
    , m_folder(folder)
{
}

std::unique_ptr<LibraryChange> LibraryChange::begin(const Needs &needs, const Plan &plan)
{
    const QString unpacking = unpackingFolder(needs.folders);
    if (unpacking.isEmpty())
        return nullptr;
    const QString id = QString::number(QRandomGenerator::system()->generate64(), 36);
    std::unique_ptr<LibraryChange> change(new LibraryChange(needs, plan, unpacking + u'\\' + id));
    change->m_plan.folder = QFileInfo(needs.folders.appOnDisk(plan.keyword).value_or(QString())).fileName();
    if (plan.kind == Kind::Arrive)
        change->m_plan.keyword = change->m_plan.folder;
    return change->start() ? std::move(change) : nullptr;
}

bool LibraryChange::start()
{
    // From here on what has been made is cleared away again.
    m_isOpen = true;
    const QString name = std::ranges::find(kindNames, m_plan.kind, &KindName::kind)->name;
    const QJsonObject plan{{"kind"_L1, name}, {"keyword"_L1, m_plan.keyword},
        {"newKeyword"_L1, m_plan.newKeyword}, {"atTop"_L1, m_plan.place == Place::Top},
        {"folder"_L1, m_plan.folder}};
    return isFolderName(m_plan.folder)
        && m_claim.claim(systemFolder() + claimEnding) == FileClaim::Outcome::Claimed
        && QDir().mkdir(systemFolder()) && QDir().mkdir(inFolder(newName))
        && plum::replaceFile(inFolder(planFile), QJsonDocument(plan).toJson());
}

LibraryChange::~LibraryChange()
{
    if (m_isOpen && !m_isMade)
        takeBack();
}

QString LibraryChange::systemFolder() const
{
    return m.folders.onDisk(m_folder);
}

QString LibraryChange::inFolder(QLatin1StringView name) const
{
    return systemFolder() + u'/' + name;
}

QString LibraryChange::newFolder() const
{
    return m_folder + u'\\' + newName;
}

// Exactly this folder, not one that differs in letter case.
QString LibraryChange::appOnDisk(const QString &folder) const
{
    return m.folders.onDisk(m.folders.apps()) + u'/' + folder;
}

QString LibraryChange::appOnDisk() const
{
    return appOnDisk(m_plan.folder);
}

QString LibraryChange::asideApp() const
{
    const QStringList aside = everythingIn(inFolder(oldName));
    return aside.isEmpty() ? QString() : inFolder(oldName) + u'/' + aside.front();
}

QString LibraryChange::oldApp() const
{
    const QString aside = asideApp();
    return aside.isEmpty() && isThere(appOnDisk()) ? appOnDisk() : aside;
}

bool LibraryChange::takeAside()
{
    const QString app = appOnDisk();
    return !isThere(app)
        || (QDir().mkpath(inFolder(oldName)) && QDir().rename(app, inFolder(oldName) + u'/' + m_plan.folder));
}

bool LibraryChange::arrive(const QByteArray &record)
{
    // A folder that came while the old app was aside is nobody's leftover.
    if (isThere(appOnDisk()) && !asideApp().isEmpty())
        return false;
    if (record.isEmpty())
        removeRecord(); // of an app that somebody deleted by hand
    else if (!plum::replaceFile(inFolder(recordFile), record))
        return false;
    m_isMade = takeAside() && QDir().rename(inFolder(newName), appOnDisk());
    return m_isMade;
}

bool LibraryChange::rename()
{
    m_isMade = QDir().rename(appOnDisk(), appOnDisk(m_plan.newKeyword));
    return m_isMade;
}

bool LibraryChange::remove()
{
    const QString app = appOnDisk();
    m_isMade = (!QFileInfo(app).isSymLink() && m.trash(app)) || takeAside();
    return m_isMade;
}

// Not written beside the old file: what a kill leaves there would become a file of the app.
bool LibraryChange::replaceFile(const QString &name, const QByteArray &content)
{
    const QString prepared = inFolder(newName) + u'/' + name;
    const QString file = m.folders.onDisk(m.folders.appFile(m_plan.folder, name));
    if (QFileInfo(file).isSymLink() || !plum::replaceFile(prepared, content))
        return false;
    if (QFileInfo::exists(file))
        QFile::setPermissions(prepared, QFile::permissions(file));
    std::error_code error;
    std::filesystem::rename(
        QFileInfo(prepared).filesystemFilePath(), QFileInfo(file).filesystemFilePath(), error);
    m_isMade = !error;
    return m_isMade;
}

void LibraryChange::close()
{
    keepRecord();
    settle();
}

// What a package brought is known under the app's keyword. An app that is not from a package has no record.
void LibraryChange::keepRecord()
{
    const QString mine = PackageRecord::fileOf(m_plan.keyword, m.folders);
    switch (m_plan.kind) {
    case Kind::Arrive:
        if (isThere(inFolder(recordFile))) {
            QDir().mkpath(QFileInfo(mine).path());
            QFile::remove(mine);
            QFile::rename(inFolder(recordFile), mine);
        }
        break;
    case Kind::Rename: {
        const QStringList old = PackageRecord::allFilesOf(m_plan.keyword, m.folders);
        const QStringList renamed = PackageRecord::allFilesOf(m_plan.newKeyword, m.folders);
        for (qsizetype each = 0; isThere(mine) && each < old.size(); ++each) {
            QFile::remove(renamed[each]);
            if (each != 0)
                QFile::rename(old[each], renamed[each]);
        }
        // Last of all: while it is here, the others are looked for here.
        if (isThere(mine))
            QFile::rename(mine, renamed.front());
        break;
    }
    case Kind::Delete:
        removeRecord();
        break;
    case Kind::Edit:
        break;
    }
}

void LibraryChange::removeRecord()
{
    for (const QString &file : PackageRecord::allFilesOf(m_plan.keyword, m.folders))
        QFile::remove(file);
}

// What is old goes first: until then the plan says what the folder is.
void LibraryChange::settle()
{
    m_isOpen = false;
    if (const QString old = asideApp(); !old.isEmpty() && !discard(old, m.trash))
        return;
    QFile::remove(inFolder(planFile));
    deleteFolder(systemFolder());
    m_claim.release();
    QFile::remove(systemFolder() + claimEnding);
    // Fails while another change is under way.
    QDir().rmdir(QFileInfo(systemFolder()).path());
}

// Without its plan the folder is one to be taken back, however far that gets.
void LibraryChange::takeBack()
{
    QFile::remove(inFolder(planFile));
    m_isOpen = false;
    for (const QString &name : everythingIn(inFolder(oldName))) {
        // What cannot go back now waits for the next start.
        if (isThere(appOnDisk(name)) || !QDir().rename(inFolder(oldName) + u'/' + name, appOnDisk(name)))
            return;
    }
    settle();
}

bool LibraryChange::readPlan()
{
    QFile file(inFolder(planFile));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QJsonObject plan = QJsonDocument::fromJson(file.readAll()).object();
    const QString name = plan.value("kind"_L1).toString();
    const auto kind = std::ranges::find(kindNames, name, &KindName::name);
    m_plan.keyword = plan.value("keyword"_L1).toString();
    m_plan.newKeyword = plan.value("newKeyword"_L1).toString();
    m_plan.folder = plan.value("folder"_L1).toString();
    m_plan.place = plan.value("atTop"_L1).toBool() ? Place::Top : Place::End;
    if (kind == kindNames.end() || !isFolderName(m_plan.folder))
        return false;
    m_plan.kind = kind->kind;
    return true;
}

bool LibraryChange::wasMade() const
{
    switch (m_plan.kind) {
    case Kind::Arrive:
        return !isThere(inFolder(newName)) && isThere(appOnDisk());
    case Kind::Rename:
        return !isThere(appOnDisk()) && isThere(appOnDisk(m_plan.newKeyword));
    case Kind::Delete:
        return !isThere(appOnDisk());
    case Kind::Edit:
        break; // nothing follows from it
    }
    return false;
}

void LibraryChange::finishList()
{
    AppLists lists;
    lists.List.setStringList(m.listFile.load());
    switch (m_plan.kind) {
    case Kind::Arrive:
        if (m_plan.place == Place::Top)
            lists.insertFirst(m_plan.keyword);
        else
            lists.addToBoth(m_plan.keyword);
        break;
    case Kind::Rename:
        lists.rename(m_plan.keyword, m_plan.newKeyword);
        break;
    case Kind::Delete:
        lists.remove(m_plan.keyword);
        break;
    case Kind::Edit:
        return;
    }
    m.listFile.ConfigSave(lists.List.stringList());
}

void LibraryChange::recover(const Needs &needs)
{
    recoverBelow(needs.folders.unpacking(), needs);
    recoverBelow(needs.folders.unpackingInApps(), needs);
    for (const QString &folder : {needs.folders.load(), needs.folders.packageRecords()}) {
        for (const QString &file : unfinishedReplacements(needs.folders.onDisk(folder)))
            discard(file, needs.trash);
    }
}

void LibraryChange::recoverBelow(const QString &unpacking, const Needs &needs)
{
    const QDir folder(needs.folders.onDisk(unpacking));
    if (!folder.exists())
        return;
    const QStringList changes = folder.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString &id : changes) {
        LibraryChange change(needs, {}, unpacking + u'\\' + id);
        // Another process may be making this change right now.
        if (change.m_claim.claim(change.systemFolder() + claimEnding) != FileClaim::Outcome::Claimed)
            continue;
        change.m_isOpen = true;
        if (change.readPlan() && change.wasMade()) {
            change.m_isMade = true;
            change.finishList();
            change.close();
        }
    }
    const QStringList claims = folder.entryList({u'*' + claimEnding}, QDir::Files | QDir::Hidden);
    for (const QString &name : claims) {
        const QFileInfo claim(folder, name);
        if (!folder.exists(claim.completeBaseName())
            && claim.lastModified().secsTo(QDateTime::currentDateTime()) > claimPatience)
            QFile::remove(claim.filePath());
    }
    QDir().rmdir(folder.path());
}

} // namespace plum
