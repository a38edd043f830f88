#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

namespace plum {

// Writes a text for another program from the event loop, as fast as that one reads, and deletes itself at the
// end.
class TextSender final : public QObject
{
public:
    // Closes `descriptor`.
    TextSender(int descriptor, const QByteArray &text, QObject *parent);
    ~TextSender() override;

private:
    void sendMore();

    int m_descriptor;
    QByteArray m_text;
    qsizetype m_sent = 0;
    QSocketNotifier *m_room;
};

} // namespace plum
