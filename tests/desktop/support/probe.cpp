#include "desktop/support/probe.h"

#include "desktop/support/conditions.h"
#include "support/x_server.h"

#include <QFile>

#include <algorithm>
#include <csignal>

namespace plum {

using namespace Qt::StringLiterals;

Probe::Probe(const XServer &server, const QString &logPath, const QString &title, const QRect &rectangle,
    const QString &picture)
    : m_logPath(logPath)
{
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    QStringList arguments{logPath, title,
        u"%1,%2,%3,%4"_s.arg(rectangle.x())
            .arg(rectangle.y())
            .arg(rectangle.width())
            .arg(rectangle.height())};
    if (!picture.isEmpty())
        arguments += {picture, u"%1,%2"_s.arg(picturePlace.x()).arg(picturePlace.y())};
    server.start(m_process, QStringLiteral(PLUM_PROBE), arguments);
}

Probe::~Probe()
{
    m_process.kill();
    m_process.waitForFinished();
}

void Probe::stop()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

bool Probe::hasStarted()
{
    return eventually([this] {
        for (const QString &line : lines()) {
            if (line.startsWith("window "_L1))
                m_window = line.sliced(7).toUInt();
        }
        return m_window != XCB_NONE;
    });
}

// A line that is not complete yet is left for later.
QStringList Probe::lines() const
{
    QFile file(m_logPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    lines.removeLast();
    return lines;
}

QStringList Probe::seen() const
{
    return lines().mid(m_forgotten);
}

QStringList Probe::seen(const QStringList &words) const
{
    QStringList found;
    for (const QString &line : seen()) {
        if (std::ranges::any_of(words, [&](const QString &word) { return line.startsWith(word); }))
            found += line;
    }
    return found;
}

void Probe::forget()
{
    m_forgotten = lines().size();
}

bool Probe::sees(const QString &event) const
{
    return eventually([&] { return seen().contains(event); });
}

} // namespace plum
