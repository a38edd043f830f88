#pragma once

#include "platform/news.h"
#include "platform/wayland/sway/sway_socket.h"

#include <QSocketNotifier>

#include <memory>

namespace plum {

// Sway's events of windows that come, go, are put elsewhere and change their titles.
class SwayWindowNews final : public News
{
public:
    // Null where sway does not answer.
    static std::unique_ptr<News> listening();

    bool arrived() override;

private:
    SwayWindowNews() = default;
    void takeEvents();

    SwaySocket m_socket;
    std::unique_ptr<QSocketNotifier> m_events;
    bool m_hasArrived = true;
};

} // namespace plum
