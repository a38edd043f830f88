#include "kit/messages/message_stream.h"

#include <QJsonDocument>

namespace plum::kit {

namespace {

constexpr QByteArrayView lengthHeader("Content-Length:");
constexpr qint64 longestHeader = 1024; // bytes of one line
constexpr qint64 longestMessage = qint64(1) << 26; // bytes

} // namespace

ReceivedMessage MessageStream::read()
{
    using Kind = ReceivedMessage::Kind;
    qint64 length = -1;
    for (;;) {
        const QByteArray line = m_from.readLine(longestHeader);
        if (!line.endsWith('\n'))
            return {line.size() + 1 < longestHeader ? Kind::End : Kind::NoMessage};
        if (line.trimmed().isEmpty())
            break;
        if (line.startsWith(lengthHeader)) {
            bool isNumber = false;
            length = line.sliced(lengthHeader.size()).trimmed().toLongLong(&isNumber);
            length = isNumber ? length : -1;
        }
    }
    if (length < 0 || length > longestMessage)
        return {Kind::NoMessage};
    QByteArray content;
    while (content.size() < length) {
        const QByteArray more = m_from.read(length - content.size());
        if (more.isEmpty())
            return {Kind::End};
        content += more;
    }
    const QJsonDocument document = QJsonDocument::fromJson(content);
    if (!document.isObject())
        return {Kind::NoObject};
    return {Kind::Message, document.object()};
}

void MessageStream::write(const QJsonObject &message)
{
    const QByteArray content = QJsonDocument(message).toJson(QJsonDocument::Compact);
    m_to.write("Content-Length: " + QByteArray::number(content.size()) + "\r\n\r\n" + content);
}

} // namespace plum::kit
