#include "launcher_link.h"

#include <cstdio>
#include <iostream>
#include <string>

namespace plum {

LauncherLink::LauncherLink()
    : m_reader(&LauncherLink::readCommands, this)
{
}

LauncherLink::~LauncherLink()
{
    m_reader.join();
}

void LauncherLink::tell(QLatin1StringView verb, const QJsonObject &fields)
{
    const QByteArray line = toLine(verb, fields);
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

void LauncherLink::readCommands()
{
    for (std::string line; std::getline(std::cin, line);) {
        const std::optional<WindowMessage> command = fromLine(QByteArrayView(line));
        if (!command)
            continue;
        if (command->verb == windowMessages::end)
            break;
        QMetaObject::invokeMethod(this, [this, command] { Q_EMIT commandArrived(*command); });
    }
    QMetaObject::invokeMethod(this, [this] { Q_EMIT ended(); });
}

} // namespace plum
