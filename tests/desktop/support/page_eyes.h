#pragma once

#include <QJsonValue>
#include <QString>

namespace plum {

// Looks into the page of a Qt WebEngine process that was started with QTWEBENGINE_REMOTE_DEBUGGING set to
// this port of the loopback interface.
class PageEyes
{
public:
    // Where there are several pages it looks into the one whose address ends in `address`.
    explicit PageEyes(quint16 port, const QString &address = {})
        : m_port(port)
        , m_address(address)
    {
    }

    // The value of a JavaScript expression in the page; undefined when there is none or it throws.
    QJsonValue see(const QString &expression) const;

private:
    QString pagePath() const;

    quint16 m_port;
    QString m_address;
};

} // namespace plum
