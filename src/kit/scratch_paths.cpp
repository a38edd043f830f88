#include "kit/scratch_paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

// A larger file counts as an empty one.
constexpr qint64 largestCopy = qint64(64) << 20;

void copyFile(const QFileInfo &real, const QString &copy)
{
    QFile::remove(copy); // what stood for it in a list of its folder
    QFile target(copy);
    QFile source(real.filePath());
    if (target.open(QIODevice::WriteOnly) && real.size() <= largestCopy && source.open(QIODevice::ReadOnly))
        target.write(source.readAll());
}

// The names of what is in it; the files are fetched when they are named themselves.
void copyFolder(const QString &real, const QString &copy)
{
    QDir().mkpath(copy);
    for (const QFileInfo &entry :
        QDir(real).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)) {
        const QString inCopy = copy + u'/' + entry.fileName();
        if (entry.isDir())
            QDir().mkpath(inCopy);
        else if (!QFileInfo::exists(inCopy))
            static_cast<void>(QFile(inCopy).open(QIODevice::WriteOnly));
    }
}

} // namespace

QString ScratchPaths::toSystem(const QString &path) const
{
    if (path.isEmpty())
        return m_real.toSystem(path);
    QString real = QDir::cleanPath(QDir::current().absoluteFilePath(m_real.toSystem(path)));
    // A run may have been told of a copy.
    if (real.startsWith(m_folder + u'/'))
        real = realOf(real);
    QString copy = copyOf(real);
    if (!m_fetched.contains(copy)) {
        m_fetched.insert(copy);
        fetch(real, copy);
    }
    return copy;
}

QString ScratchPaths::copyOf(const QString &real) const
{
    return QDir::cleanPath(m_folder + u'/' + QString(real).remove(u':'));
}

QString ScratchPaths::realOf(const QString &copy) const
{
    const QString below = copy.sliced(m_folder.size());
    // A drive has lost its colon.
    const bool hasDrives = QDir::rootPath().contains(u':');
    return hasDrives && below.size() > 2 ? below.sliced(1, 1) + u':' + below.sliced(2) : below;
}

void ScratchPaths::fetch(const QString &real, const QString &copy) const
{
    const QFileInfo info(real);
    const QFileInfo folder(info.path());
    // In a folder that is not there nothing can be made.
    if (folder.isDir())
        QDir().mkpath(QFileInfo(copy).path());
    if (info.isDir())
        copyFolder(real, copy);
    else if (info.isFile())
        copyFile(info, copy);
}

} // namespace plum::kit
