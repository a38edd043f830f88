#include "library/safe_file.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace plum {

using namespace Qt::StringLiterals;

bool replaceFile(const QString &systemPath, const QByteArray &content)
{
    if (!QDir().mkpath(QFileInfo(systemPath).path()))
        return false;
    QSaveFile file(systemPath);
    // Committing would not notice that the rest of a buffer found no room on the disk.
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush()
        && file.commit();
}

QStringList unfinishedReplacements(const QString &systemFolder)
{
    constexpr qint64 patience = 60; // seconds
    // The name of the file and six random letters. A user's own copy has rather a word there.
    static const QRegularExpression temporary(u".\\.(?=.+[A-Z])(?=.*[a-z])[A-Za-z]{6}$"_s);
    QStringList found;
    const QFileInfoList files = QDir(systemFolder).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo &file : files) {
        if (temporary.match(file.fileName()).hasMatch()
            && file.lastModified().secsTo(QDateTime::currentDateTime()) > patience)
            found += file.filePath();
    }
    return found;
}

} // namespace plum
