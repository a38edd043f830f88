#pragma once

#include <QJsonValue>
#include <QString>

namespace plum {

// Looks into the page of a Qt WebEngine process that was started with QTWEBENGINE_REMOTE_DEBUGGING set to
// this port of the loopback interface.
class PageEyes
{
public:
    explicit PageEyes(quint16 port)
        : m_port(port)
    {
    }

    // The value of a JavaScript expression in the (only) page; undefined when there is none or it throws.
    QJsonValue see(const QString &expression) const;

private:
    QString pagePath() const;

    quint16 m_port;
};

} // namespace plum
