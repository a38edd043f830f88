#include "desktop/support/probe.h"

#include "desktop/support/conditions.h"
#include "support/x_server.h"

#include <csignal>

namespace plum {

using namespace Qt::StringLiterals;

Probe::Probe(const XServer &server, const QString &logPath, const QString &title, const QRect &rectangle,
    const QString &picture)
    : m_log(logPath)
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
        m_window = m_log.last(u"window"_s).toUInt();
        return m_window != XCB_NONE;
    });
}

bool Probe::sees(const QString &event) const
{
    return eventually([&] { return seen().contains(event); });
}

} // namespace plum
