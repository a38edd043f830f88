#include "support/gnome_session.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int startTime = 60'000; // milliseconds; a loaded machine takes long
constexpr uid_t nobody = 65534;
const QString display = u"plum-gnome"_s;
const QString extension = QStringLiteral("plum@" PLUM_DOMAIN);

// No service is started by its name: a session takes what it finds for its own.
constexpr auto busConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
  </policy>
</busconfig>
)";

constexpr auto settings = R"([org/gnome/shell]
enabled-extensions=['%1']
welcome-dialog-last-shown-version='999'
[org/gnome/desktop/interface]
enable-animations=false
[org/gnome/desktop/session]
idle-delay=uint32 0
)";

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return QDir().mkpath(path.section(u'/', 0, -2)) && file.open(QIODevice::WriteOnly)
        && file.write(content) == content.size();
}

bool giveToNobody(const QString &folder)
{
    if (geteuid() != 0)
        return true;
    bool isGiven = chown(QFile::encodeName(folder).constData(), nobody, nobody) == 0;
    QDirIterator all(
        folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (all.hasNext())
        isGiven = chown(QFile::encodeName(all.next()).constData(), nobody, nobody) == 0 && isGiven;
    return isGiven;
}

} // namespace

GnomeSession::GnomeSession(const QStringList &monitors)
{
    m_isReady = start(monitors);
}

GnomeSession::~GnomeSession()
{
    while (!m_programs.empty()) {
        QProcess &last = m_programs.back();
        last.terminate();
        if (last.state() != QProcess::NotRunning && !last.waitForFinished(startTime)) {
            last.kill();
            last.waitForFinished(startTime);
        }
        m_programs.pop_back();
    }
}

QString GnomeSession::busAddress() const
{
    return u"unix:path="_s + m_folder.filePath(u"bus"_s);
}

bool GnomeSession::writeFiles() const
{
    const QString home = m_folder.path();
    const QString built = QStringLiteral(PLUM_GNOME_EXTENSIONS) + u'/' + extension;
    const QString installed = home + u"/.local/share/gnome-shell/extensions/"_s + extension;
    bool isWhole = QDir().mkpath(installed);
    for (const QString &file : QDir(built).entryList(QDir::Files)) {
        isWhole = isWhole && QFile::copy(built + u'/' + file, installed + u'/' + file);
    }
    return isWhole
        && write(home + u"/bus.conf"_s, QString::fromLatin1(busConfiguration).arg(home + u"/bus"_s).toUtf8())
        && write(home + u"/.config/glib-2.0/settings/keyfile"_s,
            QString::fromLatin1(settings).arg(extension).toUtf8())
        && giveToNobody(home);
}

QProcess &GnomeSession::run(const QString &program, const QStringList &arguments)
{
    QProcess &process = m_programs.emplace_back();
    process.setProcessEnvironment(m_environment);
    process.setWorkingDirectory(m_folder.path());
    process.setChildProcessModifier([] {
        if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(1);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(m_folder.filePath(u"log"_s), QIODevice::Append);
    process.setStandardErrorFile(m_folder.filePath(u"log"_s), QIODevice::Append);
    process.start(QStandardPaths::findExecutable(program), arguments);
    return process;
}

bool GnomeSession::waitForFile(const QString &name)
{
    constexpr int lookAgain = 10; // milliseconds
    const QDeadlineTimer deadline(startTime);
    while (!QFile::exists(m_folder.filePath(name))) {
        if (m_programs.back().waitForFinished(lookAgain) || m_programs.back().state() == QProcess::NotRunning
            || deadline.hasExpired())
            return false;
    }
    return true;
}

bool GnomeSession::start(const QStringList &monitors)
{
    if (!writeFiles())
        return false;
    m_environment = QProcessEnvironment::systemEnvironment();
    for (const char *foreign : {"DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        m_environment.remove(QLatin1StringView(foreign));
    m_environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path());
    m_environment.insert(u"HOME"_s, m_folder.path());
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, busAddress());
    // There must be one, with nothing on it.
    m_environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, busAddress());
    m_environment.insert(u"GSETTINGS_BACKEND"_s, u"keyfile"_s);
    m_environment.insert(u"XDG_CURRENT_DESKTOP"_s, u"GNOME"_s);
    m_environment.insert(u"XDG_SESSION_TYPE"_s, u"wayland"_s);
    m_environment.insert(u"LIBGL_ALWAYS_SOFTWARE"_s, u"1"_s);
    // The shell starts an input method where it finds one.
    m_environment.insert(u"PATH"_s, u"/nonexistent"_s);

    run(u"dbus-daemon"_s, {u"--config-file"_s, m_folder.filePath(u"bus.conf"_s), u"--nofork"_s});
    if (!waitForFile(u"bus"_s))
        return false;
    run(u"pipewire"_s, {});
    if (!waitForFile(u"pipewire-0"_s))
        return false;
    run(u"wireplumber"_s, {});
    QStringList arguments{u"--headless"_s, u"--wayland"_s, u"--no-x11"_s, u"--wayland-display"_s, display};
    for (const QString &monitor : monitors)
        arguments += {u"--virtual-monitor"_s, monitor};
    run(u"gnome-shell"_s, arguments);

    return waitForShell();
}

bool GnomeSession::callBus(const QStringList &words)
{
    QProcess call;
    call.setProcessEnvironment(m_environment);
    call.start(QStandardPaths::findExecutable(u"gdbus"_s), words);
    return call.waitForFinished(startTime) && call.exitStatus() == QProcess::NormalExit
        && call.exitCode() == 0;
}

// It begins with its overview, in which no window has the keyboard.
bool GnomeSession::waitForShell()
{
    constexpr int lookAgain = 10; // milliseconds
    const QDeadlineTimer deadline(startTime);
    for (bool hasStarted = false; !hasStarted;) {
        if (m_programs.back().waitForFinished(lookAgain) || m_programs.back().state() == QProcess::NotRunning
            || deadline.hasExpired())
            return false;
        QFile log(m_folder.filePath(u"log"_s));
        hasStarted = log.open(QIODevice::ReadOnly) && log.readAll().contains("GNOME Shell started");
    }
    const QString patience = QString::number(startTime / 1000);
    return callBus(
               {u"wait"_s, u"--session"_s, u"--timeout"_s, patience, QStringLiteral(PLUM_DOMAIN ".Desktop")})
        && callBus({u"call"_s, u"--session"_s, u"--timeout"_s, patience, u"--dest"_s, u"org.gnome.Shell"_s,
            u"--object-path"_s, u"/org/gnome/Shell"_s, u"--method"_s,
            u"org.freedesktop.DBus.Properties.Set"_s, u"org.gnome.Shell"_s, u"OverviewActive"_s,
            u"<false>"_s});
}

void GnomeSession::useAsDesktop() const
{
    for (const char *foreign : {"DISPLAY", "PLUM_PLATFORM", "SWAYSOCK"})
        qunsetenv(foreign);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
    qputenv("WAYLAND_DISPLAY", display.toLocal8Bit());
    qputenv("DBUS_SESSION_BUS_ADDRESS", busAddress().toLocal8Bit());
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    qputenv("QT_QPA_PLATFORM", "wayland");
}

} // namespace plum
