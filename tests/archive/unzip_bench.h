#pragma once

#include "archive/unzip.h"
#include "platform/recording/recording_platform.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

namespace plum::testing {

// An archive in a folder of its own, and a record of what the reader says about it.
class UnzipBench
{
public:
    UnzipBench()
        : reader(paths, m_codec)
    {
        QObject::connect(&reader, &Unzip::UnzipError, [this](const QString &message, int index) {
            EXPECT_EQ(reader.LastError(), message); // it is set before the event
            errors += message + u'@' + QString::number(index);
        });
        QObject::connect(&reader, &Unzip::UnzipProgress, [this](int index, int position, int total) {
            progress += QStringLiteral("%1: %2/%3").arg(index).arg(position).arg(total);
        });
    }

    // As a caller writes them.
    QString archivePath() const { return backslashed(folder.filePath(QStringLiteral("a.wfp"))); }
    QString targetPath() const { return backslashed(folder.filePath(QStringLiteral("target"))); }

    QString systemTarget() const { return folder.filePath(QStringLiteral("target")); }

    void write(const QByteArray &archive) const
    {
        QFile file(folder.filePath(QStringLiteral("a.wfp")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(archive);
    }

    bool init(const QByteArray &archive)
    {
        write(archive);
        return reader.Init(archivePath());
    }

    // Init and unzip in one.
    bool run(const QByteArray &archive, const Unzip::Filter &filter = {})
    {
        return init(archive) && reader.unzip(targetPath(), filter);
    }

    bool has(const QString &name) const { return QFileInfo::exists(systemTarget() + u'/' + name); }

    // Nothing when there is no such file.
    std::optional<QByteArray> content(const QString &name) const
    {
        QFile file(systemTarget() + u'/' + name);
        return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
    }

    // Everything in the bench's folder, the archive and the target with what is in it included.
    QStringList everything() const
    {
        QStringList names;
        QDirIterator entries(folder.path(),
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (entries.hasNext())
            names += entries.next().sliced(folder.path().size() + 1);
        names.sort();
        return names;
    }

    // As new.
    void reset()
    {
        QFile::remove(folder.filePath(QStringLiteral("a.wfp")));
        QDir(systemTarget()).removeRecursively();
        errors.clear();
        progress.clear();
    }

    static QString backslashed(QString path) { return path.replace(u'/', u'\\'); }

    QTemporaryDir folder;
    QStringList errors; // "message@index"
    QStringList progress; // "index: position/total"

    recording::RecordingPaths paths;

private:
    recording::RecordingTextCodec m_codec;

public:
    Unzip reader;
};

} // namespace plum::testing
