#include "platform/file_claim.h"

#include <QDir>
#include <QFile>
#include <QList>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

FileClaim::~FileClaim()
{
    release();
}

FileClaim::Outcome FileClaim::claim(const QString &systemPath)
{
    release();
    // Programs that are started meanwhile must not hold it on.
    const int file = open(QFile::encodeName(systemPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0)
        return Outcome::Impossible;
    if (flock(file, LOCK_EX | LOCK_NB) == 0) {
        m_handle = file;
        return Outcome::Claimed;
    }
    const Outcome outcome = errno == EWOULDBLOCK ? Outcome::HeldByAnother : Outcome::Impossible;
    close(file);
    return outcome;
}

// The kernel lists the locks with the numbers of their files; two file systems may have the same number, so
// the process has to have the file open.
std::optional<qint64> FileClaim::holder(const QString &systemPath)
{
    const auto identity = [](const QByteArray &path) {
        struct stat info = {};
        return stat(path.constData(), &info) == 0 ? std::optional(std::pair(info.st_dev, info.st_ino))
                                                  : std::nullopt;
    };
    const auto file = identity(QFile::encodeName(systemPath));
    QFile locks(u"/proc/locks"_s);
    if (!file || !locks.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : locks.readAll().split('\n')) {
        // "1: FLOCK  ADVISORY  WRITE 4711 08:01:4242 0 EOF"
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.value(1) != "FLOCK" || !words.value(5).endsWith(':' + QByteArray::number(file->second)))
            continue;
        const QByteArray process = words[4];
        const QString opened = u"/proc/%1/fd/"_s.arg(QString::fromLatin1(process));
        for (const QString &descriptor : QDir(opened).entryList(QDir::AllEntries | QDir::System)) {
            if (identity(QFile::encodeName(opened + descriptor)) == file)
                return process.toLongLong();
        }
    }
    return {};
}

void FileClaim::release()
{
    if (m_handle != none)
        close(static_cast<int>(std::exchange(m_handle, none)));
}

} // namespace plum
