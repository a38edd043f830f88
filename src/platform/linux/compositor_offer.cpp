#include "platform/linux/compositor_offer.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <poll.h>
#include <span>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace plum {

namespace {

constexpr int patience = 1000; // milliseconds

// Objects of the conversation: the display has always this number, the other two are ours.
constexpr quint32 display = 1;
constexpr quint32 registry = 2;
constexpr quint32 callback = 3;

constexpr std::size_t headerSize = 8;

class Socket
{
public:
    Socket()
        : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
    }
    ~Socket() { close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(Socket)

    bool connectTo(const QByteArray &path)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
            return false;
        std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
        return connect(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    }

    bool send(std::span<const quint32> words)
    {
        return ::send(m_descriptor, words.data(), words.size_bytes(), MSG_NOSIGNAL)
            == static_cast<ssize_t>(words.size_bytes());
    }

    // What has arrived; empty at the end, after an error and after `deadline`.
    QByteArray receive(const QDeadlineTimer &deadline)
    {
        std::array<char, 4096> buffer{};
        pollfd wanted{m_descriptor, POLLIN, 0};
        while (poll(&wanted, 1, static_cast<int>(deadline.remainingTime())) > 0) {
            const ssize_t got = recv(m_descriptor, buffer.data(), buffer.size(), 0);
            if (got >= 0)
                return {buffer.data(), got};
            if (errno != EAGAIN && errno != EINTR)
                break;
        }
        return {};
    }

private:
    int m_descriptor;
};

quint32 wordAt(QByteArrayView bytes, std::size_t offset)
{
    quint32 word = 0;
    std::memcpy(&word, bytes.data() + offset, sizeof word);
    return word;
}

// A message's object, and its length and kind as they share a word.
constexpr std::array<quint32, 3> request(quint32 kind, quint32 newObject)
{
    constexpr quint32 length = 12;
    return {display, length << 16 | kind, newObject};
}

QByteArray socketPath()
{
    QByteArray name = qgetenv("WAYLAND_DISPLAY");
    if (name.isEmpty() || name.startsWith('/'))
        return name;
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QByteArray() : folder + '/' + name;
}

// The interface that an announcement of the registry names: a number, the name's length with the zero at its
// end, the name, and a version.
std::optional<QByteArray> announced(QByteArrayView body)
{
    constexpr std::size_t nameAt = 8;
    if (body.size() < static_cast<qsizetype>(nameAt))
        return {};
    const quint32 length = wordAt(body, 4);
    if (length == 0 || length > static_cast<std::size_t>(body.size()) - nameAt)
        return {};
    return body.sliced(nameAt, length - 1).toByteArray();
}

constexpr std::array wlrootsNeeds{"zwlr_virtual_pointer_manager_v1", "zwp_virtual_keyboard_manager_v1",
    "zwlr_screencopy_manager_v1", "zwlr_data_control_manager_v1"};

// Offered to a program whose desktop file asks for them.
constexpr std::array kwinNeeds{
    "org_kde_kwin_fake_input", "org_kde_plasma_window_management", "zwlr_data_control_manager_v1"};

// What it is driven by is on the session bus; this one is its own.
constexpr std::array mutterNeeds{"gtk_shell1"};

struct Needs
{
    CompositorFamily family;
    std::span<const char *const> interfaces;
};

constexpr std::array families{Needs{CompositorFamily::Wlroots, wlrootsNeeds},
    Needs{CompositorFamily::KWin, kwinNeeds}, Needs{CompositorFamily::Mutter, mutterNeeds}};

} // namespace

CompositorFamily familyOf(std::span<const QByteArray> offer)
{
    const auto found = std::ranges::find_if(families, [&](const Needs &needs) {
        return std::ranges::all_of(needs.interfaces, [&](const char *interface) {
            return std::ranges::any_of(
                offer, [&](const QByteArray &offered) { return offered == interface; });
        });
    });
    return found == families.end() ? CompositorFamily::Unknown : found->family;
}

std::vector<QByteArray> compositorOffer()
{
    constexpr quint32 sync = 0;
    constexpr quint32 getRegistry = 1;
    const QByteArray path = socketPath();
    Socket socket;
    if (path.isEmpty() || !socket.connectTo(path) || !socket.send(request(getRegistry, registry))
        || !socket.send(request(sync, callback)))
        return {};

    std::vector<QByteArray> offer;
    const QDeadlineTimer deadline(patience);
    QByteArray arrived;
    while (true) {
        const QByteArray more = socket.receive(deadline);
        if (more.isEmpty())
            return {};
        arrived += more;
        while (arrived.size() >= static_cast<qsizetype>(headerSize)) {
            const quint32 object = wordAt(arrived, 0);
            const quint32 length = wordAt(arrived, 4) >> 16;
            if (length < headerSize || object == display)
                return {};
            if (arrived.size() < static_cast<qsizetype>(length))
                break;
            if (object == callback)
                return offer;
            if (const auto name = announced(QByteArrayView(arrived).first(length).sliced(headerSize)))
                offer.push_back(*name);
            arrived.remove(0, length);
        }
    }
}

} // namespace plum
