#pragma once

#include "archive/zip_writer.h"
#include "engine/launcher.h"
#include "library/app_library.h"
#include "library/app_list_file.h"
#include "library/app_lists.h"
#include "library/package_installer.h"
#include "platform/recording/recording_platform.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace plum::recording {

// Writes every message and question into the log: "message! text" when it is system-modal.
class RecordingDialogs final : public LibraryDialogs
{
public:
    explicit RecordingDialogs(Log &log)
        : m_log(log)
    {
    }

    void showMessage(const Message &message) override
    {
        m_log.add(
            (message.systemModal ? QStringLiteral("message! ") : QStringLiteral("message ")) + message.text);
        if (onMessage)
            onMessage();
    }

    bool askToDelete(const QString &question, const QString &title, const QString &keyword) override
    {
        m_log.add(QStringLiteral("ask %1|%2|%3").arg(question, title, keyword));
        return answer;
    }

    bool answer = true;
    std::function<void()> onMessage;

private:
    Log &m_log;
};

inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly)
        || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(path));
}

// A package of these files.
inline QByteArray packageOf(const QList<std::pair<QString, QByteArray>> &files)
{
    ZipWriter archive;
    for (const auto &[name, content] : files)
        archive.add(name, content, QDateTime::currentDateTime());
    return archive.finish();
}

// A program folder of its own on the disk.
class ProgramFolder
{
public:
    QString path() const { return m_folder.path(); }
    QString apps(const QString &name = {}) const { return path() + QStringLiteral("/config/apps/") + name; }
    QString configTxt() const { return path() + QStringLiteral("/config/load/config.txt"); }
    QString setIni() const { return path() + QStringLiteral("/config/load/set.ini"); }
    // A package beside the library; its full path.
    QString addPackage(const QString &fileName, const QByteArray &package) const
    {
        const QString file = path() + QStringLiteral("/downloads/") + fileName;
        writeBytes(file, package);
        return file;
    }

    // The names of the apps' folders and of everything else in their place.
    QStringList inApps() const
    {
        return QDir(apps()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QString script(const QString &keyword) const { return apps(keyword) + QStringLiteral("/main.wf"); }

    void addApp(const QString &keyword, const QByteArray &script = "time.sleep \"1\"\r\n") const
    {
        writeBytes(this->script(keyword), script);
    }

private:
    QTemporaryDir m_folder;
};

// A trash of a test's own; writes down the names of what goes there.
class RecordingTrash
{
public:
    explicit RecordingTrash(Log &log)
        : m_log(log)
    {
    }

    bool take(const QString &path)
    {
        if (!isThere)
            return false;
        const QString name = QFileInfo(path).fileName();
        const QString target = m_folder.path() + QLatin1Char('/') + name;
        QDir(target).removeRecursively();
        if (!QDir().rename(path, target))
            return false;
        m_log.add(QStringLiteral("trash ") + name);
        return true;
    }

    Trash asTrash()
    {
        return [this](const QString &path) { return take(path); };
    }

    QByteArray read(const QString &name) const { return bytesOf(m_folder.path() + QLatin1Char('/') + name); }

    bool isThere = true;

private:
    Log &m_log;
    QTemporaryDir m_folder;
};

// The whole library on a program folder of its own, with a user who answers at once.
class LibraryBench
{
public:
    // Loads the list from the disk, as a start does.
    void load() { lists.List.setStringList(listFile.load()); }

    ProgramFolder folder;
    Log log;

private:
    std::unique_ptr<Platform> m_system = createPlatform(folder.path() + QStringLiteral("/plum"));

public:
    Paths &paths = m_system->paths();
    TextCodec &codec = m_system->textCodec();
    RecordingShell shell{log};
    RecordingDialogs dialogs{log};
    RecordingTrash trash{log};
    AppLists lists;
    AppListFile listFile{paths, codec};
    AppFolders folders{paths};
    PackageInstaller installer{{paths, codec, {folders, listFile, trash.asTrash()}}};
    AppLibrary appLibrary{{paths, codec, shell, dialogs, installer, lists, listFile}};
};

} // namespace plum::recording
