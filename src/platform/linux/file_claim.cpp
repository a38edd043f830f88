#include "platform/file_claim.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace plum {

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

void FileClaim::release()
{
    if (m_handle != none)
        close(static_cast<int>(std::exchange(m_handle, none)));
}

} // namespace plum
