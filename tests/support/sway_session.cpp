#include "support/sway_session.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QThread>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int startTime = 60'000; // milliseconds; a loaded machine takes long
constexpr uid_t nobody = 65534;

// Written once everything is there that programs need.
constexpr auto readyFile = "ready"_L1;

} // namespace

SwaySession::SwaySession(const QStringList &configuration)
{
    m_isReady = start(configuration);
}

SwaySession::~SwaySession()
{
    if (m_sway.state() == QProcess::NotRunning)
        return;
    m_sway.terminate();
    if (!m_sway.waitForFinished(startTime)) {
        m_sway.kill();
        m_sway.waitForFinished(startTime);
    }
}

bool SwaySession::start(const QStringList &configuration)
{
    const QString folder = m_runtime.path();
    QFile config(folder + u"/config"_s);
    if (!config.open(QIODevice::WriteOnly))
        return false;
    config.write(
        (QStringList{u"xwayland disable"_s, u"focus_follows_mouse no"_s,
             u"for_window [title=\".*\"] floating enable"_s,
             u"exec printf '%s\\n%s\\n' \"$WAYLAND_DISPLAY\" \"$SWAYSOCK\" > %1/new && mv %1/new %1/%2"_s.arg(
                 folder, readyFile)}
            + configuration)
            .join(u'\n')
            .toUtf8()
        + '\n');
    config.close();
    config.setPermissions(QFile::ReadOwner | QFile::ReadOther);
    if (geteuid() == 0 && chown(QFile::encodeName(folder).constData(), nobody, nobody) != 0)
        return false;

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *foreign : {"DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK"})
        environment.remove(QLatin1StringView(foreign));
    environment.insert(u"XDG_RUNTIME_DIR"_s, folder);
    environment.insert(u"HOME"_s, folder);
    environment.insert(u"WLR_BACKENDS"_s, u"headless"_s);
    environment.insert(u"WLR_LIBINPUT_NO_DEVICES"_s, u"1"_s);
    environment.insert(u"WLR_RENDERER"_s, u"pixman"_s);
    m_sway.setProcessEnvironment(environment);
    m_sway.setWorkingDirectory(folder);
    m_sway.setChildProcessModifier([] {
        if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(1);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    m_sway.setStandardOutputFile(QProcess::nullDevice());
    m_sway.setStandardErrorFile(QProcess::nullDevice());
    m_sway.start(u"sway"_s, {u"--config"_s, config.fileName()});

    const QDeadlineTimer deadline(startTime);
    QFile ready(folder + u'/' + readyFile);
    while (!ready.exists()) {
        constexpr int lookAgain = 10; // milliseconds
        if (m_sway.waitForFinished(lookAgain) || m_sway.state() == QProcess::NotRunning
            || deadline.hasExpired())
            return false;
    }
    if (!ready.open(QIODevice::ReadOnly))
        return false;
    m_display = QString::fromUtf8(ready.readLine()).trimmed();
    m_socket = QString::fromUtf8(ready.readLine()).trimmed();
    return !m_display.isEmpty() && !m_socket.isEmpty();
}

void SwaySession::useAsDesktop() const
{
    qunsetenv("DISPLAY");
    qunsetenv("PLUM_PLATFORM");
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime.path()));
    qputenv("WAYLAND_DISPLAY", m_display.toLocal8Bit());
    qputenv("SWAYSOCK", QFile::encodeName(m_socket));
    qputenv("QT_QPA_PLATFORM", "wayland");
}

} // namespace plum
