#include "platform/wayland/sway/sway_window_news.h"

#include <QJsonObject>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

std::unique_ptr<News> SwayWindowNews::listening()
{
    std::unique_ptr<SwayWindowNews> news(new SwayWindowNews);
    if (!news->m_socket.ask(SwaySocket::Kind::Subscribe, R"(["window"])")
             .object()
             .value("success"_L1)
             .toBool())
        return nullptr;
    news->m_events = std::make_unique<QSocketNotifier>(news->m_socket.descriptor(), QSocketNotifier::Read);
    QObject::connect(news->m_events.get(), &QSocketNotifier::activated, news->m_events.get(),
        [news = news.get()] { news->takeEvents(); });
    return news;
}

bool SwayWindowNews::arrived()
{
    takeEvents();
    return std::exchange(m_hasArrived, false);
}

void SwayWindowNews::takeEvents()
{
    while (const auto event = m_socket.nextEvent()) {
        // Which window has the keyboard is asked for by nobody who waits.
        if (QJsonDocument::fromJson(event->text).object().value("change"_L1) != "focus"_L1)
            m_hasArrived = true;
    }
    // A sway that has gone leaves its socket readable for ever.
    if (m_socket.descriptor() < 0)
        m_events->setEnabled(false);
}

} // namespace plum
