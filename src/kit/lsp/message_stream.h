#pragma once

#include <QIODevice>
#include <QJsonObject>

#include <optional>

namespace plum::kit {

// Messages of the language server protocol: a header with the length, an empty line, JSON.
class MessageStream
{
public:
    MessageStream(QIODevice &from, QIODevice &to)
        : m_from(from)
        , m_to(to)
    {
    }

    // Waits for the next message. Nothing at the end of the stream, or when what comes is no message.
    std::optional<QJsonObject> read();

    void write(const QJsonObject &message);

private:
    QIODevice &m_from;
    QIODevice &m_to;
};

} // namespace plum::kit
