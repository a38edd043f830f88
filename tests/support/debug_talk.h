#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <functional>

namespace plum::test {

using namespace Qt::StringLiterals;

// An editor's end of a talk with plumkit debug.
class DebugTalk
{
public:
    explicit DebugTalk(QProcess &process)
        : m_process(process)
    {
        process.setReadChannel(QProcess::StandardOutput);
    }

    void sendBytes(const QByteArray &bytes) { m_process.write(bytes); }

    void sendText(const QByteArray &content)
    {
        sendBytes("Content-Length: " + QByteArray::number(content.size()) + "\r\n\r\n" + content);
    }

    void send(const QString &command, const QJsonObject &arguments = {})
    {
        const QJsonObject request{{u"seq"_s, ++m_seq}, {u"type"_s, u"request"_s}, {u"command"_s, command},
            {u"arguments"_s, arguments}};
        sendText(QJsonDocument(request).toJson(QJsonDocument::Compact));
    }

    // The next message; empty when there is none any more.
    QJsonObject next()
    {
        qsizetype body = -1;
        qsizetype length = 0;
        for (;;) {
            body = m_bytes.indexOf("\r\n\r\n");
            if (body >= 0) {
                length = m_bytes.first(body).mid(m_bytes.indexOf(':') + 1).trimmed().toInt();
                if (m_bytes.size() >= body + 4 + length)
                    break;
            }
            if (!m_process.waitForReadyRead(patience))
                return {};
            m_bytes += m_process.readAll();
        }
        const QByteArray content = m_bytes.sliced(body + 4, length);
        m_bytes.remove(0, body + 4 + length);
        return QJsonDocument::fromJson(content).object();
    }

    // The answer to the last request, or the next event of that name; what comes before is passed over.
    QJsonObject answer()
    {
        return nextThat([this](const QJsonObject &message) { return message[u"request_seq"_s] == m_seq; });
    }
    QJsonObject event(const QString &name)
    {
        return nextThat([&](const QJsonObject &message) { return message[u"event"_s] == name; });
    }

    QJsonObject ask(const QString &command, const QJsonObject &arguments = {})
    {
        send(command, arguments);
        return answer();
    }

    // Begins the run of a script.
    void start(const QString &program, QJsonObject how = {})
    {
        how[u"program"_s] = program;
        ask(u"initialize"_s);
        EXPECT_EQ(ask(u"launch"_s, how)[u"success"_s], true);
        ask(u"configurationDone"_s);
    }

private:
    QJsonObject nextThat(const std::function<bool(const QJsonObject &)> &isMeant)
    {
        for (;;) {
            QJsonObject message = next();
            if (message.isEmpty() || isMeant(message))
                return message;
        }
    }

    static constexpr int patience = 60'000; // milliseconds

    QProcess &m_process;
    QByteArray m_bytes;
    int m_seq = 0;
};

} // namespace plum::test
