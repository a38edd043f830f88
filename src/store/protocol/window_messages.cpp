#include "store/protocol/window_messages.h"

#include <QJsonDocument>

namespace plum {

namespace {

constexpr QLatin1StringView verbField("verb");

} // namespace

QByteArray toLine(QLatin1StringView verb, QJsonObject fields)
{
    fields.insert(verbField, verb);
    return QJsonDocument(fields).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<WindowMessage> fromLine(QByteArrayView line)
{
    const QJsonObject fields = QJsonDocument::fromJson(line.toByteArray()).object();
    const QString verb = fields.value(verbField).toString();
    if (verb.isEmpty())
        return std::nullopt;
    return WindowMessage{verb, fields};
}

} // namespace plum
