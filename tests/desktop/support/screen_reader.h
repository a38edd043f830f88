#pragma once

#include "support/x_server.h"

#include <QProcess>
#include <QSize>
#include <QStringList>

#include <vector>

namespace plum {

// One node of what a program tells assistive technology.
struct Node
{
    QString role; // as AT-SPI calls it, e.g. "push button"
    QString name;
    QString description;
    QString text; // of an entry
    QStringList actions;
    QStringList states; // "focused", "selected", "checked", "enabled"
    QSize size = {}; // pixels

    bool is(const QString &state) const { return states.contains(state); }
};

// Reads the launcher through the accessibility bus, from another process. Programs that are to be read need
// QT_LINUX_ACCESSIBILITY_ALWAYS_ON in their environment.
class ScreenReader
{
public:
    explicit ScreenReader(const XServer &server);
    ~ScreenReader();
    Q_DISABLE_COPY_MOVE(ScreenReader)

    // All nodes that are shown right now, in their order.
    std::vector<Node> look();

    // The first one; without a name when there is none.
    Node find(const QString &role, const QString &beginning);

private:
    QProcess m_process;
};

} // namespace plum
