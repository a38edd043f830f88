#include "kit/lsp/message_stream.h"

#include <QJsonDocument>

namespace plum::kit {

namespace {

constexpr QByteArrayView lengthHeader("Content-Length:");
constexpr qint64 longestHeader = 1024; // bytes of one line
constexpr qint64 longestMessage = qint64(1) << 26; // bytes

} // namespace

std::optional<QJsonObject> MessageStream::read()
{
    qint64 length = -1;
    for (;;) {
        const QByteArray line = m_from.readLine(longestHeader);
        if (!line.endsWith('\n'))
            return {};
        if (line.trimmed().isEmpty())
            break;
        if (line.startsWith(lengthHeader))
            length = line.sliced(lengthHeader.size()).trimmed().toLongLong();
    }
    if (length < 0 || length > longestMessage)
        return {};
    QByteArray content;
    while (content.size() < length) {
        const QByteArray more = m_from.read(length - content.size());
        if (more.isEmpty())
            return {};
        content += more;
    }
    const QJsonDocument document = QJsonDocument::fromJson(content);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

void MessageStream::write(const QJsonObject &message)
{
    const QByteArray content = QJsonDocument(message).toJson(QJsonDocument::Compact);
    m_to.write("Content-Length: " + QByteArray::number(content.size()) + "\r\n\r\n" + content);
}

} // namespace plum::kit
