#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <deque>
#include <optional>

namespace plum::testing {

// A web server on the loopback interface that answers exactly what it is told to, byte for byte.
class ByteServer : public QObject
{
public:
    enum class Then { Close, Reset, Stall };

    struct Answer
    {
        QByteArray bytes;
        Then then = Then::Close;
    };

    ByteServer();

    // What the next request gets; the last answer is given again until there is another.
    void answer(const Answer &answer);

    // From now on gives `content` to every request as a careful server does: ranges with 206, ranges outside
    // with 416 and no body. A transfer ends by a reset after `most` bytes of body, if set.
    void serve(const QByteArray &content, qint64 most = -1);

    // From now on answers with `bytes` and then one more byte every so many milliseconds, without end.
    void trickle(const QByteArray &bytes, int pace);

    QString url(const QString &path) const;

    // The "Range" header of every request so far.
    QList<QByteArray> ranges() const { return headers("range"); }
    QList<QByteArray> headers(const QByteArray &name) const;
    QList<QByteArray> requests;

private:
    void onConnection();
    Answer answerTo(const QByteArray &request);
    Answer contentFor(const QByteArray &request) const;

    QTcpServer m_server;
    std::deque<Answer> m_answers;
    bool m_lastWasGiven = false;
    std::optional<QByteArray> m_content;
    qint64 m_most = -1;
    int m_pace = 0; // milliseconds; 0: no trickling
};

// An answer with the headers given, one a line.
QByteArray httpAnswer(const QByteArray &status, const QByteArrayList &headers, const QByteArray &body);

} // namespace plum::testing
