#include "platform/wayland/mutter/remote_session.h"

#include "platform/wayland/mutter/gnome_monitors.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

const QString remoteDesktop = u"org.gnome.Mutter.RemoteDesktop"_s;
const QString screenCast = u"org.gnome.Mutter.ScreenCast"_s;

QString pathIn(const QDBusMessage &answer)
{
    return answer.signature() == "o"_L1 ? answer.arguments().constFirst().value<QDBusObjectPath>().path()
                                        : QString();
}

} // namespace

StreamNumber::StreamNumber()
{
    moveToThread(&m_thread);
    m_thread.start();
}

StreamNumber::~StreamNumber()
{
    m_thread.quit();
    m_thread.wait();
}

std::optional<quint32> StreamNumber::wait(int milliseconds)
{
    return m_hasArrived.tryAcquire(1, milliseconds) ? std::optional(m_number) : std::nullopt;
}

void StreamNumber::arrived(uint number)
{
    m_number = number;
    m_hasArrived.release();
}

bool RemoteSession::begin()
{
    if (!m_remote.path.isEmpty())
        return true;
    for (const GnomeMonitor &monitor : readMonitors(m_bus))
        m_area |= monitor.area;
    const QString remotePath = pathIn(
        m_bus.call({remoteDesktop, u"/org/gnome/Mutter/RemoteDesktop"_s, remoteDesktop}, u"CreateSession"_s));
    if (m_area.isEmpty() || remotePath.isEmpty())
        return false;
    m_remote = {remoteDesktop, remotePath, remoteDesktop + u".Session"_s};
    const QDBusMessage id = m_bus.call({remoteDesktop, remotePath, u"org.freedesktop.DBus.Properties"_s},
        u"Get"_s, {m_remote.interface, u"SessionId"_s});
    const QVariant idValue = id.arguments().value(0).value<QDBusVariant>().variant();
    const QString castPath
        = pathIn(m_bus.call({screenCast, u"/org/gnome/Mutter/ScreenCast"_s, screenCast}, u"CreateSession"_s,
            {QVariantMap{{u"remote-desktop-session-id"_s, idValue}, {u"disable-animations"_s, true}}}));
    constexpr uint withoutPointer = 0;
    m_streamPath = pathIn(m_bus.call({screenCast, castPath, screenCast + u".Session"_s}, u"RecordArea"_s,
        {m_area.x(), m_area.y(), m_area.width(), m_area.height(),
            QVariantMap{{u"cursor-mode"_s, withoutPointer}}}));
    if (!m_streamPath.isEmpty()) {
        m_number = std::make_unique<StreamNumber>();
        m_bus.listen({screenCast, m_streamPath, screenCast + u".Stream"_s}, u"PipeWireStreamAdded"_s,
            m_number.get(), SLOT(arrived(uint)));
    }
    ++m_generation;
    if (!m_bus.succeeds(m_remote, u"Start"_s)) {
        end();
        return false;
    }
    return true;
}

void RemoteSession::end()
{
    if (m_remote.path.isEmpty())
        return;
    m_bus.succeeds(m_remote, u"Stop"_s);
    m_remote = {};
    m_streamPath.clear();
    m_area = {};
    m_number.reset();
    m_stream.reset();
}

// A session that was ended from outside is begun anew once.
bool RemoteSession::notify(const QString &method, const std::function<QVariantList()> &arguments)
{
    m_isUnsettled = true;
    for (int attempt = 0; attempt < 2 && begin(); ++attempt) {
        if (m_bus.succeeds(m_remote, method, arguments()))
            return true;
        end();
    }
    return false;
}

bool RemoteSession::key(quint32 symbol, bool down)
{
    return notify(u"NotifyKeyboardKeysym"_s, [&] { return QVariantList{symbol, down}; });
}

bool RemoteSession::button(int button, bool down)
{
    return notify(u"NotifyPointerButton"_s, [&] { return QVariantList{button, down}; });
}

bool RemoteSession::moveTo(QPoint point)
{
    return notify(u"NotifyPointerMotionAbsolute"_s, [&] {
        return QVariantList{m_streamPath, double(point.x() - m_area.x()), double(point.y() - m_area.y())};
    });
}

QRect RemoteSession::area()
{
    begin();
    return m_area;
}

std::optional<quint32> RemoteSession::stream()
{
    constexpr int patience = 10'000; // milliseconds
    if (begin() && !m_stream && m_number)
        m_stream = m_number->wait(patience);
    return m_stream;
}

} // namespace plum
