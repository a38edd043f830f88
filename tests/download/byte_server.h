#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>

#include <deque>

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

    // What the next request gets; after the last answer that one is given again.
    void answer(const Answer &answer) { m_answers.push_back(answer); }

    // From now on gives `content` to every request as a careful server does: ranges with 206, ranges outside
    // with 416 and no body. A transfer ends by a reset after `most` bytes of body, if set.
    void serve(const QByteArray &content, qint64 most = -1);

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
    std::optional<QByteArray> m_content;
    qint64 m_most = -1;
};

// An answer with the headers given, one a line.
QByteArray httpAnswer(const QByteArray &status, const QByteArrayList &headers, const QByteArray &body);

} // namespace plum::testing
