#include "desktop/support/eyes.h"

#include "support/wait_until.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

using test::patience;

QRect rectangle(const QJsonValue &value)
{
    const QJsonArray numbers = value.toArray();
    return {numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt()};
}

Control control(const QJsonObject &seen)
{
    Control made{.name = seen[u"name"_s].toString(),
        .window = seen[u"window"_s].toString(),
        .place = rectangle(seen[u"place"_s]),
        .shown = seen[u"shown"_s].toBool(),
        .enabled = seen[u"enabled"_s].toBool(),
        .focus = seen[u"focus"_s].toBool(),
        .checked = seen[u"checked"_s].toBool(),
        .topmost = seen[u"topmost"_s].toBool(),
        .caret = seen[u"caret"_s].toInt(),
        .icon = seen[u"icon"_s].toInt(),
        .id = static_cast<quint32>(seen[u"id"_s].toInteger()),
        .text = seen[u"text"_s].toString(),
        .title = seen[u"title"_s].toString(),
        .toolTip = seen[u"toolTip"_s].toString(),
        .items = {},
        .rows = {}};
    for (const QJsonValue &item : seen[u"items"_s].toArray())
        made.items += item.toString();
    for (const QJsonValue &row : seen[u"rows"_s].toArray())
        made.rows.push_back(rectangle(row));
    return made;
}

} // namespace

std::vector<Control> Eyes::look()
{
    const QDeadlineTimer deadline(patience);
    while (m_socket.state() != QLocalSocket::ConnectedState) {
        m_socket.connectToServer(m_path);
        if (m_socket.waitForConnected(patience))
            break;
        constexpr int lookAgain = 5; // milliseconds
        const bool hasEnded
            = m_program.waitForFinished(lookAgain) || m_program.state() == QProcess::NotRunning;
        if (hasEnded || deadline.hasExpired())
            return {};
    }
    m_socket.write("look\n");
    while (!m_socket.canReadLine()) {
        if (!m_socket.waitForReadyRead(patience))
            return {};
    }
    std::vector<Control> all;
    for (const QJsonValue &seen : QJsonDocument::fromJson(m_socket.readLine()).array())
        all.push_back(control(seen.toObject()));
    return all;
}

Control Eyes::see(const QString &path)
{
    const QString window = path.section(u'/', 0, 0);
    const QString name = path.section(u'/', 1);
    Control found;
    const auto rank = [](const Control &control) {
        return control.name.isEmpty() ? 0 : 1 + 2 * int(control.shown) + int(control.id != 0);
    };
    for (const Control &each : look()) {
        if (each.window == window && each.name == name && rank(each) > rank(found))
            found = each;
    }
    return found;
}

} // namespace plum
