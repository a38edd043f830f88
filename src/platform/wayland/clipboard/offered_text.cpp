#include "platform/wayland/clipboard/offered_text.h"

#include "platform/wayland/clipboard/text_types.h"
#include "platform/wayland/connection/wayland_connection.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace plum {

OfferedText::OfferedText(zwlr_data_control_offer_v1 *offer)
    : m_offer(offer)
{
    static constexpr zwlr_data_control_offer_v1_listener listener{
        .offer = [](void *self, zwlr_data_control_offer_v1 *,
                     const char *type) { static_cast<OfferedText *>(self)->m_types.emplace_back(type); },
    };
    zwlr_data_control_offer_v1_add_listener(offer, &listener, this);
}

QString OfferedText::read(WaylandConnection &connection, int milliseconds)
{
    const auto type = std::ranges::find_if(textTypes, [this](const char *known) {
        return std::ranges::any_of(m_types, [&](const QByteArray &offered) { return offered == known; });
    });
    std::array<int, 2> ends{};
    if (type == textTypes.end() || pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    zwlr_data_control_offer_v1_receive(m_offer.get(), *type, ends[1]);
    connection.flush();
    close(ends[1]);

    QByteArray text;
    bool isWhole = false;
    const QDeadlineTimer deadline(milliseconds);
    std::array<char, 1 << 16> buffer{};
    pollfd arrival{ends[0], POLLIN, 0};
    while (!isWhole && poll(&arrival, 1, static_cast<int>(deadline.remainingTime())) > 0) {
        const ssize_t got = ::read(ends[0], buffer.data(), buffer.size());
        if (got > 0)
            text.append(buffer.data(), got);
        else if (got == 0)
            isWhole = true;
        else if (errno != EINTR)
            break;
    }
    close(ends[0]);
    return isWhole ? QString::fromUtf8(text) : QString();
}

} // namespace plum
