#include "platform/wayland/kwin/kwin_session.h"

#include "platform/wayland/kwin/kwin_bus.h"

namespace plum {

using namespace Qt::StringLiterals;

Session::Outcome KWinSession::monitorOff()
{
    const QDBusMessage answer = m_bus.call(
        {u"org.kde.kglobalaccel"_s, u"/component/org_kde_powerdevil"_s, "org.kde.kglobalaccel.Component"_L1},
        "invokeShortcut"_L1, {u"Turn Off Screen"_s});
    return answer.type() == QDBusMessage::ReplyMessage ? Outcome::Done : Outcome::Unavailable;
}

} // namespace plum
