#include "library/carried_files.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace plum {

namespace {

// Walks through both folders at once.
class Carrying
{
public:
    Carrying(const PackageRecord &brought, CarriedFiles which, PackageRecord &record)
        : m_brought(brought)
        , m_which(which)
        , m_record(record)
    {
    }

    // `relative` is the folder's name in the app, empty or with a "/" at its end.
    void carry(const QString &from, const QString &to, const QString &relative)
    {
        const QHash<QString, QString> there = namesIn(to);
        const QFileInfoList entries = QDir(from).entryInfoList(everything);
        for (const QFileInfo &entry : entries) {
            const QString known = there.value(entry.fileName().toLower());
            const QString target = to + u'/' + (known.isEmpty() ? entry.fileName() : known);
            if (entry.isSymLink() || entry.isFile()) {
                if (known.isEmpty())
                    carryFile(entry, target, relative + entry.fileName());
            } else if (entry.isDir()) {
                carryFolder(entry, target, relative + entry.fileName());
            }
            if (m_error)
                return;
        }
    }

    CarryOutcome outcome() const
    {
        if (!m_error)
            return CarryOutcome::Done;
        return m_error == std::errc::no_space_on_device || m_error == std::errc::file_too_large
            ? CarryOutcome::NoRoom
            : CarryOutcome::Failed;
    }

private:
    static constexpr QDir::Filters everything
        = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

    static QHash<QString, QString> namesIn(const QString &folder)
    {
        QHash<QString, QString> names;
        const QStringList entries = QDir(folder).entryList(everything);
        for (const QString &name : entries)
            names.insert(name.toLower(), name);
        return names;
    }

    void carryFolder(const QFileInfo &entry, const QString &target, const QString &name)
    {
        const bool isThere = QFileInfo::exists(target);
        if (isThere && !QFileInfo(target).isDir())
            return;
        carry(entry.filePath(), target, name + u'/');
        if (!m_error && (m_which == CarriedFiles::All || !m_brought.folders.contains(name)))
            make(target);
    }

    void carryFile(const QFileInfo &entry, const QString &target, const QString &name)
    {
        const bool isPackages = !entry.isSymLink() && m_brought.isUnchanged(name, entry.filePath());
        if (isPackages && m_which == CarriedFiles::UsersOwn)
            return;
        make(QFileInfo(target).path());
        if (m_error)
            return;
        const std::filesystem::path from = entry.filesystemFilePath();
        const std::filesystem::path to = QFileInfo(target).filesystemFilePath();
        if (entry.isSymLink()) {
            std::filesystem::copy_symlink(from, to, m_error);
            return;
        }
        std::filesystem::copy_file(from, to, m_error);
        if (m_error)
            return;
        // A copy without its time is still the file.
        std::error_code ignored;
        const auto time = std::filesystem::last_write_time(from, ignored);
        if (!ignored)
            std::filesystem::last_write_time(to, time, ignored);
        if (isPackages)
            m_record.files.insert(name, m_brought.files.value(name));
    }

    void make(const QString &folder)
    {
        std::filesystem::create_directories(QFileInfo(folder).filesystemFilePath(), m_error);
    }

    const PackageRecord &m_brought;
    const CarriedFiles m_which;
    PackageRecord &m_record;
    std::error_code m_error;
};

} // namespace

CarryOutcome carryOver(const QString &from, const QString &to, const PackageRecord &brought,
    CarriedFiles which, PackageRecord &record)
{
    Carrying carrying(brought, which, record);
    carrying.carry(from, to, {});
    return carrying.outcome();
}

} // namespace plum
