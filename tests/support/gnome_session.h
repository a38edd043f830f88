#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <list>

namespace plum {

// A GNOME Shell without a screen, with Plum's extension, a bus and PipeWire of its own, ready when the
// constructor returns. All of it ends with this object or with the test's process. As root it runs as the
// user "nobody", in a folder of that user's.
class GnomeSession
{
public:
    // `monitors` are the sizes of its screens, "1280x800".
    explicit GnomeSession(const QStringList &monitors = {QStringLiteral("1280x800")});
    ~GnomeSession();
    Q_DISABLE_COPY_MOVE(GnomeSession)

    // False when it did not come up.
    bool isReady() const { return m_isReady; }

    // Makes this the desktop of the test's own process and of all programs that it starts from now on.
    void useAsDesktop() const;

private:
    bool start(const QStringList &monitors);
    bool writeFiles() const;
    QProcess &run(const QString &program, const QStringList &arguments);
    bool waitForFile(const QString &name);
    bool waitForShell();
    bool callBus(const QStringList &words);

    QString busAddress() const;

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    std::list<QProcess> m_programs; // in the order in which they were started
    bool m_isReady = false;
};

} // namespace plum
