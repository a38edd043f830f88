#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>
#include <utility>

namespace plum {

// One answer of an HTTP/1.1 server, taken apart while its bytes arrive. What follows the answer is not
// looked at: a connection serves one request.
class HttpAnswer
{
public:
    // Status line and header fields together, those of interim answers counted in. A longer head is no HTTP.
    static constexpr qsizetype largestHead = qsizetype(256) * 1024; // bytes

    enum class State {
        Head, // the body has not begun
        Body,
        Complete,
        Cut, // the connection ended before the answer did
        NotHttp,
    };

    // Takes what has arrived and appends to `body` what of it belongs to the body.
    void take(const QByteArray &bytes, QByteArray &body);

    // Says that nothing more will arrive.
    void end();

    State state() const { return m_state; }
    bool hasHead() const { return m_hasHead; }

    // 0 before the head is there.
    int status() const { return m_status; }

    // The values of the fields of that name, in any letter case, joined by ", "; empty when there is none.
    QByteArray header(QByteArrayView name) const;

    // Bytes in the body, where the head says how many.
    std::optional<qint64> length() const { return m_length; }

private:
    enum class Step { StatusLine, Fields, Counted, UntilEnd, ChunkSize, Chunk, ChunkEnd };

    qsizetype takeLine(QByteArrayView bytes);
    qsizetype takeBody(const QByteArray &all, QByteArrayView bytes, QByteArray &body);
    void useLine(QByteArrayView line);
    void readStatus(QByteArrayView line);
    void readField(QByteArrayView line);
    void endHead();
    void readChunkSize(QByteArrayView line);
    bool isCounted() const { return m_step == Step::Counted || m_step == Step::Chunk; }
    bool isInHead() const { return m_step == Step::StatusLine || m_step == Step::Fields; }

    State m_state = State::Head;
    Step m_step = Step::StatusLine;
    bool m_hasHead = false;
    QByteArray m_line; // its beginning, while its end has not arrived
    qsizetype m_headSize = 0;
    int m_status = 0;
    QList<std::pair<QByteArray, QByteArray>> m_fields;
    std::optional<qint64> m_length;
    qint64 m_left = 0; // bytes of the body, or of the chunk in hand
};

} // namespace plum
