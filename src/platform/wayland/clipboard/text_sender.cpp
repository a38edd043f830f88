#include "platform/wayland/clipboard/text_sender.h"

#include "platform/linux/without_pipe_signal.h"

#include <QSocketNotifier>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace plum {

TextSender::TextSender(int descriptor, const QByteArray &text, QObject *parent)
    : QObject(parent)
    , m_descriptor(descriptor)
    , m_text(text)
    , m_room(new QSocketNotifier(descriptor, QSocketNotifier::Write, this))
{
    fcntl(m_descriptor, F_SETFL, O_NONBLOCK);
    connect(m_room, &QSocketNotifier::activated, this, [this] { sendMore(); });
}

TextSender::~TextSender()
{
    delete m_room;
    close(m_descriptor);
}

void TextSender::sendMore()
{
    const WithoutPipeSignal guard;
    while (m_sent < m_text.size()) {
        const ssize_t written
            = write(m_descriptor, m_text.constData() + m_sent, static_cast<size_t>(m_text.size() - m_sent));
        if (written < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (written < 0)
            break;
        m_sent += written;
    }
    m_room->setEnabled(false);
    deleteLater();
}

} // namespace plum
