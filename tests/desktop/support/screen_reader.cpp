#include "desktop/support/screen_reader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60'000; // milliseconds

QStringList texts(const QJsonValue &values)
{
    QStringList all;
    for (const QJsonValue &value : values.toArray())
        all += value.toString();
    return all;
}

} // namespace

ScreenReader::ScreenReader(const XServer &server)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server.start(m_process, QStringLiteral(PLUM_AT_SPI_READER), {u"plum"_s});
    while (!m_process.canReadLine() && m_process.waitForReadyRead(patience)) { }
    EXPECT_EQ(m_process.readLine(), "ready\n");
}

ScreenReader::~ScreenReader()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished(patience);
}

std::vector<Node> ScreenReader::look()
{
    m_process.write("look\n");
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(patience))
            return {};
    }
    std::vector<Node> nodes;
    for (const QJsonValue &value : QJsonDocument::fromJson(m_process.readLine()).array()) {
        const QJsonObject seen = value.toObject();
        nodes.push_back({seen[u"role"_s].toString(), seen[u"name"_s].toString(),
            seen[u"description"_s].toString(), seen[u"text"_s].toString(), texts(seen[u"actions"_s]),
            texts(seen[u"states"_s]), QSize(seen[u"width"_s].toInt(), seen[u"height"_s].toInt())});
    }
    return nodes;
}

Node ScreenReader::find(const QString &role, const QString &beginning)
{
    const std::vector<Node> nodes = look();
    const auto found = std::ranges::find_if(
        nodes, [&](const Node &node) { return node.role == role && node.name.startsWith(beginning); });
    return found == nodes.end() ? Node() : *found;
}

} // namespace plum
