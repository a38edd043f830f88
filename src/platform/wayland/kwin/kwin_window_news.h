#pragma once

#include "platform/news.h"
#include "platform/wayland/connection/wayland_objects.h"

#include <QSocketNotifier>

#include <memory>
#include <vector>

namespace plum {

// KWin's events of windows that come, go, are minimised or shown again, and change their titles.
class KWinWindowNews final : public News
{
public:
    // Null where KWin does not tell this process of windows.
    static std::unique_ptr<News> listening();

    bool arrived() override;

private:
    struct Window
    {
        KWinWindowNews &news;
        WaylandOwned<org_kde_plasma_window> object;
        uint32_t state = 0;
    };

    KWinWindowNews() = default;
    bool listen();
    void add(uint32_t id);
    void takeEvents();

    WaylandOwned<wl_display> m_display;
    WaylandOwned<wl_registry> m_registry;
    WaylandOwned<org_kde_plasma_window_management> m_management;
    std::vector<std::unique_ptr<Window>> m_windows;
    std::unique_ptr<QSocketNotifier> m_events;
    bool m_hasArrived = true;
};

} // namespace plum
