#include "platform/wayland/sway/sway_socket.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonObject>

#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace plum {

namespace {

constexpr int patience = 2000; // milliseconds
constexpr quint32 eventBit = 0x80000000U;
constexpr quint32 longest = 1U << 26; // bytes; a longer message is none of sway's

// Before each message, in the machine's own order of bytes.
struct Header
{
    std::array<char, 6> mark{'i', '3', '-', 'i', 'p', 'c'};
    std::array<char, 4> length{};
    std::array<char, 4> kind{};
};
static_assert(sizeof(Header) == 14);

bool receiveAll(int descriptor, char *place, std::size_t length, const QDeadlineTimer &deadline)
{
    pollfd arrival{descriptor, POLLIN, 0};
    while (length > 0) {
        if (poll(&arrival, 1, static_cast<int>(deadline.remainingTime())) <= 0)
            return false;
        const ssize_t got = recv(descriptor, place, length, 0);
        if (got == 0 || (got < 0 && errno != EINTR && errno != EAGAIN))
            return false;
        if (got > 0) {
            place += got;
            length -= static_cast<std::size_t>(got);
        }
    }
    return true;
}

} // namespace

bool SwaySocket::open()
{
    if (m_descriptor >= 0)
        return true;
    const QByteArray path = qgetenv("SWAYSOCK");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    m_descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return true;
    close();
    return false;
}

void SwaySocket::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
}

bool SwaySocket::send(Kind kind, const QByteArray &text)
{
    if (!open())
        return false;
    Header header;
    const auto length = static_cast<quint32>(text.size());
    const auto number = static_cast<quint32>(kind);
    std::memcpy(header.length.data(), &length, sizeof length);
    std::memcpy(header.kind.data(), &number, sizeof number);
    const QByteArray message = QByteArray(reinterpret_cast<const char *>(&header), sizeof header) + text;
    return ::send(m_descriptor, message.constData(), static_cast<std::size_t>(message.size()), MSG_NOSIGNAL)
        == message.size();
}

std::optional<SwaySocket::Message> SwaySocket::receive(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    Header header;
    if (!receiveAll(m_descriptor, reinterpret_cast<char *>(&header), sizeof header, deadline))
        return {};
    quint32 length = 0;
    Message message;
    std::memcpy(&length, header.length.data(), sizeof length);
    std::memcpy(&message.kind, header.kind.data(), sizeof message.kind);
    if (length > longest)
        return {};
    message.text.resize(length);
    // The rest of a message that has begun is on its way.
    if (!receiveAll(m_descriptor, message.text.data(), length, QDeadlineTimer(patience)))
        return {};
    return message;
}

QJsonDocument SwaySocket::ask(Kind kind, const QByteArray &text)
{
    if (send(kind, text)) {
        if (const auto answer = receive(patience); answer && !(answer->kind & eventBit))
            return QJsonDocument::fromJson(answer->text);
    }
    close();
    return {};
}

bool SwaySocket::run(const QByteArray &commands)
{
    return ask(Kind::RunCommand, commands)
        .array()
        .at(0)
        .toObject()
        .value(QLatin1StringView("success"))
        .toBool();
}

std::optional<SwaySocket::Message> SwaySocket::nextEvent()
{
    pollfd arrival{m_descriptor, POLLIN, 0};
    if (m_descriptor < 0 || poll(&arrival, 1, 0) <= 0)
        return {};
    auto message = receive(patience);
    if (!message)
        close();
    return message;
}

} // namespace plum
