#include "platform/wayland/kwin/kwin_window_news.h"

#include <poll.h>
#include <string_view>
#include <utility>

namespace plum {

namespace {

// From here on a window that has gone can be let go of.
constexpr uint32_t version = 4;

} // namespace

std::unique_ptr<News> KWinWindowNews::listening()
{
    std::unique_ptr<KWinWindowNews> news(new KWinWindowNews);
    if (!news->listen())
        return nullptr;
    return news;
}

bool KWinWindowNews::listen()
{
    m_display.reset(wl_display_connect(nullptr));
    if (!m_display)
        return false;
    static constexpr wl_registry_listener globals{
        .global =
            [](void *self, wl_registry *registry, uint32_t name, const char *interface, uint32_t) {
                auto &news = *static_cast<KWinWindowNews *>(self);
                const wl_interface &wanted = org_kde_plasma_window_management_interface;
                if (!news.m_management && std::string_view(interface) == wanted.name) {
                    news.m_management.reset(static_cast<org_kde_plasma_window_management *>(
                        wl_registry_bind(registry, name, &wanted, version)));
                }
            },
        .global_remove = [](void *, wl_registry *, uint32_t) {},
    };
    m_registry.reset(wl_display_get_registry(m_display.get()));
    wl_registry_add_listener(m_registry.get(), &globals, this);
    if (wl_display_roundtrip(m_display.get()) < 0 || !m_management)
        return false;
    static const org_kde_plasma_window_management_listener windows = [] {
        org_kde_plasma_window_management_listener made{};
        made.show_desktop_changed = [](void *, org_kde_plasma_window_management *, uint32_t) {};
        made.window = [](void *self, org_kde_plasma_window_management *, uint32_t id) {
            static_cast<KWinWindowNews *>(self)->add(id);
        };
        return made;
    }();
    org_kde_plasma_window_management_add_listener(m_management.get(), &windows, this);
    // The first one brings the windows, the second what is said of them.
    wl_display_roundtrip(m_display.get());
    if (wl_display_roundtrip(m_display.get()) < 0)
        return false;
    m_events = std::make_unique<QSocketNotifier>(wl_display_get_fd(m_display.get()), QSocketNotifier::Read);
    QObject::connect(m_events.get(), &QSocketNotifier::activated, m_events.get(), [this] { takeEvents(); });
    return true;
}

void KWinWindowNews::add(uint32_t id)
{
    static const org_kde_plasma_window_listener listener = [] {
        org_kde_plasma_window_listener made{};
        made.title_changed = [](void *window, org_kde_plasma_window *, const char *) {
            static_cast<Window *>(window)->news.m_hasArrived = true;
        };
        made.app_id_changed = [](void *, org_kde_plasma_window *, const char *) {};
        made.state_changed = [](void *data, org_kde_plasma_window *, uint32_t flags) {
            // Which window has the keyboard is asked for by nobody who waits.
            const uint32_t state = flags & ~uint32_t{ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE};
            auto &window = *static_cast<Window *>(data);
            if (std::exchange(window.state, state) != state)
                window.news.m_hasArrived = true;
        };
        made.virtual_desktop_changed = [](void *, org_kde_plasma_window *, int32_t) {};
        made.themed_icon_name_changed = [](void *, org_kde_plasma_window *, const char *) {};
        made.unmapped = [](void *data, org_kde_plasma_window *) {
            auto *window = static_cast<Window *>(data);
            KWinWindowNews &news = window->news;
            news.m_hasArrived = true;
            std::erase_if(news.m_windows, [&](const auto &each) { return each.get() == window; });
        };
        made.initial_state = [](void *, org_kde_plasma_window *) {};
        // KWin tells these, whatever version was asked for.
        made.parent_window = [](void *, org_kde_plasma_window *, org_kde_plasma_window *) {};
        made.geometry = [](void *, org_kde_plasma_window *, int32_t, int32_t, uint32_t, uint32_t) {};
        made.icon_changed = [](void *, org_kde_plasma_window *) {};
        made.pid_changed = [](void *, org_kde_plasma_window *, uint32_t) {};
        made.virtual_desktop_entered = [](void *, org_kde_plasma_window *, const char *) {};
        made.virtual_desktop_left = [](void *, org_kde_plasma_window *, const char *) {};
        made.application_menu = [](void *, org_kde_plasma_window *, const char *, const char *) {};
        made.activity_entered = [](void *, org_kde_plasma_window *, const char *) {};
        made.activity_left = [](void *, org_kde_plasma_window *, const char *) {};
        made.resource_name_changed = [](void *, org_kde_plasma_window *, const char *) {};
        return made;
    }();
    m_hasArrived = true;
    m_windows.push_back(std::make_unique<Window>(*this));
    Window &window = *m_windows.back();
    window.object.reset(org_kde_plasma_window_management_get_window(m_management.get(), id));
    org_kde_plasma_window_add_listener(window.object.get(), &listener, &window);
}

bool KWinWindowNews::arrived()
{
    takeEvents();
    return std::exchange(m_hasArrived, false);
}

void KWinWindowNews::takeEvents()
{
    bool isOpen = true;
    while (isOpen && wl_display_prepare_read(m_display.get()) != 0)
        isOpen = wl_display_dispatch_pending(m_display.get()) >= 0;
    if (isOpen) {
        pollfd arrival{wl_display_get_fd(m_display.get()), POLLIN, 0};
        if (poll(&arrival, 1, 0) > 0)
            wl_display_read_events(m_display.get());
        else
            wl_display_cancel_read(m_display.get());
        isOpen = wl_display_dispatch_pending(m_display.get()) >= 0 && wl_display_flush(m_display.get()) >= 0;
    }
    // A compositor that has gone leaves its socket readable for ever.
    if (!isOpen)
        m_events->setEnabled(false);
}

} // namespace plum
