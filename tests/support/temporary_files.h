#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace plum::test {

// A folder for one test; it goes with the test.
class TemporaryFiles
{
public:
    QString folder() const { return m_folder.path(); }

    // Writes a file below the folder and returns its full path.
    QString write(const QString &name, const QByteArray &content) const
    {
        const QString path = folder() + QLatin1Char('/') + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a test file");
        return path;
    }

    // The content; empty for a file that is missing.
    QByteArray read(const QString &name) const
    {
        QFile file(folder() + QLatin1Char('/') + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace plum::test
