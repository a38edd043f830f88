#include "library/package_installer.h"

#include "archive/unzip.h"
#include "engine/editions/last_edition.h"
#include "engine/editions/later_edition.h"
#include "library/app_folders.h"
#include "platform/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct FaultText
{
    InstallFault fault;
    const char *text;
};

constexpr std::array faultTexts{
    FaultText{InstallFault::None, ""},
    FaultText{InstallFault::Keyword,
        QT_TRANSLATE_NOOP("plum::InstallFault", "The package's name cannot be a keyword.")},
    FaultText{InstallFault::Missing, QT_TRANSLATE_NOOP("plum::InstallFault", "The package is not there.")},
    FaultText{InstallFault::WriteProtected,
        QT_TRANSLATE_NOOP(
            "plum::InstallFault", "The package is write-protected; it is opened for writing too.")},
    FaultText{InstallFault::NoPackage,
        QT_TRANSLATE_NOOP("plum::InstallFault", "This is no package, or only a part of one.")},
    FaultText{
        InstallFault::Empty, QT_TRANSLATE_NOOP("plum::InstallFault", "There is nothing in the package.")},
    FaultText{InstallFault::Unreadable,
        QT_TRANSLATE_NOOP(
            "plum::InstallFault", "A file in the package is encrypted or packed in an unknown way.")},
    FaultText{InstallFault::Misplaced,
        QT_TRANSLATE_NOOP(
            "plum::InstallFault", "A file in the package cannot be put into the app's folder.")},
    FaultText{InstallFault::Damaged,
        QT_TRANSLATE_NOOP("plum::InstallFault", "The package is damaged and was not installed.")},
    FaultText{InstallFault::LaterEdition,
        QT_TRANSLATE_NOOP("plum::InstallFault",
            "This app was written for a newer Plum than this one. It was not installed.")},
    FaultText{InstallFault::NoRoom,
        QT_TRANSLATE_NOOP(
            "plum::InstallFault", "There is no room left on the disk. The package was not installed.")},
    FaultText{InstallFault::NotWritable,
        QT_TRANSLATE_NOOP(
            "plum::InstallFault", "The folder of the apps cannot be changed, or its disk is full.")},
};

// What an error of the archive reader says about the package.
struct ReaderError
{
    QStringView start;
    InstallFault fault;
};

constexpr std::array readerErrors{
    ReaderError{u"Invalid signature", InstallFault::None}, // the file itself came out, and is checked
    ReaderError{u"Encryption not supported", InstallFault::Unreadable},
    ReaderError{u"UnReduce not supported", InstallFault::Unreadable},
    ReaderError{u"Compression not supported", InstallFault::Unreadable},
    ReaderError{u"Error creating", InstallFault::Misplaced},
};

InstallFault faultOf(const QString &readerError)
{
    const auto known = std::ranges::find_if(
        readerErrors, [&](const ReaderError &each) { return readerError.startsWith(each.start); });
    return known == readerErrors.end() ? InstallFault::Damaged : known->fault;
}

constexpr QLatin1StringView scriptEnding(".wf");

// Why an archive could not be opened.
InstallFault faultOfOpening(const QString &systemPath)
{
    const QFileInfo file(systemPath);
    if (!file.isFile())
        return InstallFault::Missing;
    return file.isWritable() ? InstallFault::NoPackage : InstallFault::WriteProtected;
}

// Such an app would be installed and refused at each of its runs.
bool isOfLaterEdition(const QString &script)
{
    QFile file(script);
    return file.open(QIODevice::ReadOnly) && askedEdition(file.readAll()).number > lastEdition;
}

} // namespace

QString installFaultText(InstallFault fault)
{
    return QCoreApplication::translate(
        "plum::InstallFault", std::ranges::find(faultTexts, fault, &FaultText::fault)->text);
}

QString InstallResult::message() const
{
    const QString why = installFaultText(fault);
    return fault == InstallFault::Keyword
        ? u"Error\n\n%1 %2"_s.arg(why, keywordMessage(KeywordFault::Forbidden))
        : u"Error\n\n"_s + why;
}

InstallResult PackageInstaller::install(
    const Package &package, const std::function<void(const QString &keyword)> &list)
{
    const QString &keyword = package.keyword;
    std::unique_ptr<LibraryChange> change = isAside(keyword) ? std::move(m_aside) : nullptr;
    const auto app = m.changes.folders.appOnDisk(keyword);
    const bool isThere = change || (app && QFileInfo::exists(*app));
    if (!isThere && m.changes.folders.fault(keyword) != KeywordFault::None)
        return {InstallFault::Keyword};

    if (!change)
        change = LibraryChange::begin(m.changes, {.keyword = keyword, .place = package.place});
    if (!change)
        return {InstallFault::NotWritable};

    PackageRecord record;
    if (const InstallFault fault = unpack(package.path, change->newFolder(), record);
        fault != InstallFault::None)
        return {fault};

    if (const QString old = change->oldApp(); QFileInfo(old).isDir()) {
        const PackageRecord brought = PackageRecord::of(change->keyword(), m.changes.folders);
        const auto outcome
            = carryOver(old, m.changes.folders.onDisk(change->newFolder()), brought, package.carried, record);
        if (outcome != CarryOutcome::Done)
            return {outcome == CarryOutcome::NoRoom ? InstallFault::NoRoom : InstallFault::NotWritable};
    }
    noteOrigin(change->keyword(), package, record);
    if (m.arrives && !m.arrives(change->keyword(), m.changes.folders.onDisk(change->newFolder())))
        return {InstallFault::NotWritable};
    if (!change->arrive(record.toJson()))
        return {InstallFault::NotWritable};
    list(change->keyword());
    keepPackage(change->keyword(), package, record);
    change->close();
    return {};
}

void PackageInstaller::noteOrigin(const QString &keyword, const Package &package, PackageRecord &record) const
{
    record.origin = package.origin;
    if (!package.origin)
        return;
    const PackageRecord old = PackageRecord::of(keyword, m.changes.folders);
    const bool isSame = old.origin && old.origin->checksum == package.origin->checksum;
    record.before = isSame ? old.before : old.origin;
}

// A disk that takes no second copy costs the way back, nothing else.
void PackageInstaller::keepPackage(
    const QString &keyword, const Package &package, const PackageRecord &record)
{
    const AppFolders &folders = m.changes.folders;
    const QString kept = folders.onDisk(PackageRecord::packageOf(keyword, folders));
    const QString before = folders.onDisk(PackageRecord::packageBefore(keyword, folders));
    if (!package.origin) {
        QFile::remove(kept);
        QFile::remove(before);
        return;
    }
    const QString arriving = kept + ".new"_L1;
    QDir().mkpath(QFileInfo(kept).path());
    QFile::remove(arriving);
    if (!QFile::copy(m.paths.toSystem(package.path), arriving))
        QFile::remove(arriving);
    const PackageRecord old = PackageRecord::of(keyword, folders);
    if (old.origin && old.origin == record.before) {
        QFile::remove(before);
        QFile::rename(kept, before);
    }
    QFile::remove(kept);
    QFile::rename(arriving, kept);
}

std::optional<PackageOrigin> PackageInstaller::versionBefore(const QString &keyword) const
{
    const AppFolders &folders = m.changes.folders;
    const auto before = PackageRecord::of(keyword, folders).before;
    const bool isKept = QFileInfo(folders.onDisk(PackageRecord::packageBefore(keyword, folders))).isFile();
    return isKept ? before : std::nullopt;
}

InstallResult PackageInstaller::goBack(
    const QString &keyword, const std::function<void(const QString &keyword)> &list)
{
    const auto before = versionBefore(keyword);
    if (!before)
        return {InstallFault::Missing};
    return install({.path = PackageRecord::packageBefore(keyword, m.changes.folders),
                       .keyword = keyword,
                       .carried = CarriedFiles::UsersOwn,
                       .origin = before},
        list);
}

// Whole means that nothing failed or was left out, and that every file has its length and its checksum.
InstallFault PackageInstaller::unpack(const QString &path, const QString &folder, PackageRecord &record)
{
    Unzip archive(m.paths, m.codec);
    if (!archive.Init(path))
        return faultOfOpening(m.paths.toSystem(path));
    if (archive.Count() == 0)
        return InstallFault::Empty;

    InstallFault fault = InstallFault::None;
    const auto note = [&fault](const QString &error) {
        if (fault == InstallFault::None)
            fault = faultOf(error);
    };
    QObject::connect(&archive, &Unzip::UnzipError, &archive, note);
    const bool isDone = archive.unzip(folder);
    if (archive.ranOutOfRoom())
        return InstallFault::NoRoom;
    if (fault != InstallFault::None || !isDone)
        return fault == InstallFault::None ? InstallFault::Damaged : fault;

    for (int i = 0; i < archive.Count(); ++i) {
        const ZipEntry entry = archive.EntryInfo(i);
        const QString name = QDir::cleanPath(QString(entry.fileName).replace(u'\\', u'/'));
        if (entry.isFolder) {
            record.folders.insert(name);
            continue;
        }
        const auto measure = measureFile(m.paths.toSystem(folder + u'\\' + entry.fileName));
        if (measure != FileMeasure{entry.uncompressedSize, entry.crc})
            return InstallFault::Damaged;
        if (name.endsWith(scriptEnding)
            && isOfLaterEdition(m.paths.toSystem(folder + u'\\' + entry.fileName)))
            return InstallFault::LaterEdition;
        record.files.insert(name, *measure);
        for (qsizetype end = name.lastIndexOf(u'/'); end > 0; end = name.lastIndexOf(u'/', end - 1))
            record.folders.insert(name.first(end));
    }
    return InstallFault::None;
}

bool PackageInstaller::setAside(const QString &keyword)
{
    m_aside.reset();
    if (!appExists(keyword))
        return true;
    auto change = LibraryChange::begin(m.changes, {.keyword = keyword, .place = LibraryChange::Place::End});
    if (!change || !change->takeAside())
        return false;
    m_aside = std::move(change);
    return true;
}

bool PackageInstaller::appExists(const QString &keyword) const
{
    const auto app = m.changes.folders.appOnDisk(keyword);
    return app && QFileInfo(*app).isDir();
}

bool PackageInstaller::isAside(const QString &keyword) const
{
    return m_aside && m_aside->keyword().compare(keyword, Qt::CaseInsensitive) == 0;
}

} // namespace plum
