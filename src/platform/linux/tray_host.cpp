#include "platform/linux/tray_host.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTimer>

#include <chrono>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int patience = 1000; // milliseconds
constexpr auto untilAskedAgain = 10s;

bool hangs(const QDBusError &error)
{
    return error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout
        || error.type() == QDBusError::TimedOut;
}

} // namespace

void whenTrayHostAnswers(const std::function<void()> &then)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        // A question that nobody carries would never be answered.
        QTimer::singleShot(0, then);
        return;
    }
    const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;
    QDBusMessage question = QDBusMessage::createMethodCall(
        watcherName, u"/StatusNotifierWatcher"_s, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({watcherName, u"IsStatusNotifierHostRegistered"_s});
    question.setAutoStartService(false);
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(question, patience));
    QObject::connect(call, &QDBusPendingCallWatcher::finished, call, [call, then] {
        call->deleteLater();
        if (hangs(call->error()))
            QTimer::singleShot(untilAskedAgain, [then] { whenTrayHostAnswers(then); });
        else
            then();
    });
}

} // namespace plum
