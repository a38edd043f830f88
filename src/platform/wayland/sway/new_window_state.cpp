#include "platform/wayland/sway/new_window_state.h"

#include "platform/wayland/sway/sway_windows.h"

#include <QJsonObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <unistd.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds longestWait{15};

} // namespace

NewWindowState::NewWindowState(pid_t session, ShowState state, QObject *parent)
    : QObject(parent)
    , m_session(session)
    , m_state(state)
{
    QTimer::singleShot(longestWait, this, &QObject::deleteLater);
    m_events.ask(SwaySocket::Kind::Subscribe, "[\"window\"]");
    if (m_events.descriptor() < 0)
        return;
    auto *arrival = new QSocketNotifier(m_events.descriptor(), QSocketNotifier::Read, this);
    connect(arrival, &QSocketNotifier::activated, this, &NewWindowState::readEvents);
}

void NewWindowState::readEvents()
{
    while (const auto event = m_events.nextEvent()) {
        const QJsonObject news = QJsonDocument::fromJson(event->text).object();
        const QJsonObject window = news.value("container"_L1).toObject();
        if (news.value("change"_L1).toString() != "new"_L1
            || getsid(window.value("pid"_L1).toInt()) != m_session)
            continue;
        const WindowHandle handle = window.value("id"_L1).toInt();
        SwayWindows windows([] { return QPoint(); });
        if (m_state == ShowState::Hidden)
            windows.hide(handle);
        else if (m_state == ShowState::Minimised)
            windows.minimise(handle);
        else if (m_state == ShowState::Maximised)
            windows.maximise(handle);
        findChild<QSocketNotifier *>()->setEnabled(false);
        deleteLater();
        return;
    }
    if (m_events.descriptor() < 0)
        deleteLater();
}

} // namespace plum
