#pragma once

#include "engine/launcher.h"
#include "library/app_library.h"
#include "library/app_list_file.h"
#include "library/app_lists.h"
#include "support/recording/recording_platform.h"

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

    bool askYesNo(const QString &question, const QString &title) override
    {
        m_log.add(QStringLiteral("ask %1|%2").arg(question, title));
        return answer;
    }

    bool answer = true;
    std::function<void()> onMessage;

private:
    Log &m_log;
};

// Stands for the archive reader: makes the folder with a script in it, or fails.
class RecordingUnpacker final : public PackageUnpacker
{
public:
    explicit RecordingUnpacker(Log &log)
        : m_log(log)
    {
    }

    bool extract(const QString &packagePath, const QString &folder) override
    {
        m_log.add(QStringLiteral("extract %1|%2").arg(packagePath, folder));
        return succeeds && QDir().mkpath(folder);
    }

    bool succeeds = true;

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

// A program folder of its own on the disk.
class ProgramFolder
{
public:
    QString path() const { return m_folder.path(); }
    QString apps(const QString &name = {}) const { return path() + QStringLiteral("/config/apps/") + name; }
    QString configTxt() const { return path() + QStringLiteral("/config/load/config.txt"); }
    QString setIni() const { return path() + QStringLiteral("/config/load/set.ini"); }
    QString script(const QString &keyword) const { return apps(keyword) + QStringLiteral("/main.wf"); }

    void addApp(const QString &keyword, const QByteArray &script = "time.sleep \"1\"\r\n") const
    {
        writeBytes(this->script(keyword), script);
    }

private:
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
    RecordingUnpacker unpacker{log};
    AppLists lists;
    AppListFile listFile{paths, codec};
    AppLibrary appLibrary{{paths, codec, shell, dialogs, unpacker, lists, listFile}};
};

} // namespace plum::recording
