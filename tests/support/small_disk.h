#pragma once

#include <QDir>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace plum::test {

// A file system of its own in a folder, which is made, so that it can be full. Only this process sees it; a
// process that may not mount becomes root of a user namespace for that, which takes that it has one thread.
class SmallDisk
{
public:
    SmallDisk(const QString &folder, int bytes)
        : m_folder(QFile::encodeName(folder))
    {
        const QByteArray options = "size=" + QByteArray::number(bytes);
        m_isThere = QDir().mkpath(folder) && enterNamespace()
            && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
            && mount("none", m_folder.constData(), "tmpfs", 0, options.constData()) == 0;
    }
    ~SmallDisk()
    {
        if (m_isThere)
            umount2(m_folder.constData(), MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    bool isThere() const { return m_isThere; }

private:
    static bool enterNamespace()
    {
        const QByteArray user = QByteArray::number(geteuid());
        const QByteArray group = QByteArray::number(getegid());
        return unshare(CLONE_NEWNS) == 0
            || (unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write("setgroups", "deny")
                && write("uid_map", user + ' ' + user + " 1")
                && write("gid_map", group + ' ' + group + " 1"));
    }

    static bool write(const char *name, const QByteArray &text)
    {
        QFile file(QLatin1StringView("/proc/self/") + QLatin1StringView(name));
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
    }

    QByteArray m_folder;
    bool m_isThere = false;
};

} // namespace plum::test
