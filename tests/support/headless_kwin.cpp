#include "support/headless_kwin.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int startTime = 60'000; // milliseconds; a loaded machine takes long

// Written once everything is there that programs need.
constexpr auto readyFile = "/ready"_L1;
constexpr auto socketName = "kwin"_L1;

// A bus that starts no services of the machine's own.
constexpr char busConfiguration[]
    = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <keep_umask/>
  <listen>unix:tmpdir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void endWithParent()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

void end(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(startTime)) {
        process.kill();
        process.waitForFinished(startTime);
    }
}

} // namespace

HeadlessKWin::HeadlessKWin(const QStringList &trusted)
{
    m_isReady = start(trusted);
}

HeadlessKWin::~HeadlessKWin()
{
    end(m_kwin);
    end(m_bus);
}

bool HeadlessKWin::write(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    return QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly)
        && file.write(content) == content.size();
}

bool HeadlessKWin::start(const QStringList &trusted)
{
    QFile rights(QStringLiteral(PLUM_KWIN_RIGHTS));
    if (!rights.open(QIODevice::ReadOnly))
        return false;
    const QString wanted = QString::fromUtf8(rights.readAll());
    for (qsizetype i = 0; i < trusted.size(); ++i) {
        const QString path = QFileInfo(trusted[i]).canonicalFilePath();
        if (!write(u"data/applications/trusted%1.desktop"_s.arg(i),
                QString(wanted).replace("@PROGRAM@"_L1, path).toUtf8()))
            return false;
    }
    // No time goes into effects, no corner of the screen pushes the pointer back, and the frames of windows
    // are seen on all sides.
    if (!write(u"config/kdeglobals"_s, "[KDE]\nAnimationDurationFactor=0\n")
        || !write(u"config/kwinrc"_s,
            "[Effect-overview]\nBorderActivate=9\n[Effect-windowview]\nBorderActivateAll=9\n"
            "[org.kde.kdecoration2]\nlibrary=org.kde.breeze\nBorderSizeAuto=false\nBorderSize=Normal\n")
        || !write(u"bus.conf"_s, QString::fromLatin1(busConfiguration).arg(m_folder.path()).toUtf8()))
        return false;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *foreign : {"DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "QT_QPA_PLATFORM", "LD_PRELOAD"})
        environment.remove(QLatin1StringView(foreign));
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path());
    environment.insert(u"HOME"_s, m_folder.path());
    environment.insert(u"XDG_CONFIG_HOME"_s, m_folder.filePath(u"config"_s));
    environment.insert(u"XDG_DATA_HOME"_s, m_folder.filePath(u"data"_s));
    environment.insert(u"XDG_CACHE_HOME"_s, m_folder.filePath(u"cache"_s));
    return startBus(environment) && startKWin(environment);
}

bool HeadlessKWin::startBus(const QProcessEnvironment &environment)
{
    m_bus.setProcessEnvironment(environment);
    m_bus.setChildProcessModifier(endWithParent);
    m_bus.setStandardErrorFile(QProcess::nullDevice());
    m_bus.start(u"dbus-daemon"_s,
        {u"--config-file"_s, m_folder.filePath(u"bus.conf"_s), u"--nofork"_s, u"--print-address"_s});
    const QDeadlineTimer deadline(startTime);
    while (!m_bus.canReadLine()) {
        if (!m_bus.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            return false;
    }
    m_busAddress = QString::fromUtf8(m_bus.readLine()).trimmed();
    return !m_busAddress.isEmpty();
}

bool HeadlessKWin::startKWin(QProcessEnvironment environment)
{
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_busAddress);
    // KWin reads the desktop files from what this writes.
    QProcess applications;
    applications.setProcessEnvironment(environment);
    applications.setStandardOutputFile(QProcess::nullDevice());
    applications.setStandardErrorFile(QProcess::nullDevice());
    applications.start(u"kbuildsycoca5"_s, {u"--noincremental"_s});
    if (!applications.waitForFinished(startTime))
        return false;
    // The packaged file may have more capabilities than a container lets it have, and does not start there
    // then; a copy has none.
    const QString program = m_folder.filePath(u"kwin_wayland"_s);
    if (!QFile::copy(QStandardPaths::findExecutable(u"kwin_wayland"_s), program))
        return false;
    m_kwin.setProcessEnvironment(environment);
    m_kwin.setWorkingDirectory(m_folder.path());
    m_kwin.setChildProcessModifier(endWithParent);
    m_kwin.setStandardOutputFile(QProcess::nullDevice());
    m_kwin.setStandardErrorFile(QProcess::nullDevice());
    const QString ready = m_folder.path() + readyFile;
    m_kwin.start(program,
        {u"--virtual"_s, u"--width"_s, u"1280"_s, u"--height"_s, u"800"_s, u"--no-lockscreen"_s,
            u"--socket"_s, socketName, u"touch %1"_s.arg(ready)});
    const QDeadlineTimer deadline(startTime);
    while (!QFile::exists(ready)) {
        constexpr int lookAgain = 10; // milliseconds
        if (m_kwin.waitForFinished(lookAgain) || m_kwin.state() == QProcess::NotRunning
            || deadline.hasExpired())
            return false;
    }
    return true;
}

void HeadlessKWin::useAsDesktop() const
{
    for (const char *foreign : {"DISPLAY", "SWAYSOCK", "PLUM_PLATFORM"})
        qunsetenv(foreign);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_busAddress.toUtf8());
    qputenv("WAYLAND_DISPLAY", QByteArray(socketName.data(), socketName.size()));
    qputenv("QT_QPA_PLATFORM", "wayland");
}

} // namespace plum
