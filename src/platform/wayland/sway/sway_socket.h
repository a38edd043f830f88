#pragma once

#include <QByteArray>
#include <QJsonDocument>

#include <optional>

namespace plum {

// A connection to sway's socket, the one that SWAYSOCK names. Without it nothing is answered. An answer that
// does not come within two seconds counts as none, and the connection is made anew.
class SwaySocket
{
public:
    // Kinds of messages, with sway's numbers.
    enum class Kind : quint32 {
        RunCommand = 0,
        Subscribe = 2,
        GetTree = 4,
        GetConfig = 9,
    };

    struct Message
    {
        quint32 kind = 0; // with the highest bit for events
        QByteArray text;
    };

    SwaySocket() = default;
    ~SwaySocket() { close(); }
    Q_DISABLE_COPY_MOVE(SwaySocket)

    // Whether this session is one of sway's.
    static bool isThere() { return !qgetenv("SWAYSOCK").isEmpty(); }

    QJsonDocument ask(Kind kind, const QByteArray &text = {});

    // Runs commands, parted by ";" or ","; true when the first one was carried out.
    bool run(const QByteArray &commands);

    // The next event after a subscription; nothing when none has arrived yet.
    std::optional<Message> nextEvent();

    int descriptor() const { return m_descriptor; }

private:
    bool open();
    void close();
    bool send(Kind kind, const QByteArray &text);
    std::optional<Message> receive(int milliseconds);

    int m_descriptor = -1;
};

} // namespace plum
