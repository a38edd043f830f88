#pragma once

#include "store/protocol/window_messages.h"

#include <QObject>

#include <thread>

namespace plum {

// The window's line to the launcher: commands from standard input, events to standard output.
class LauncherLink final : public QObject
{
    Q_OBJECT

public:
    LauncherLink();
    ~LauncherLink() override;
    Q_DISABLE_COPY_MOVE(LauncherLink)

    static void tell(QLatin1StringView verb, const QJsonObject &fields = {});

Q_SIGNALS:
    void commandArrived(const plum::WindowMessage &command);

    // The launcher wants the process to end, or is gone.
    void ended();

private:
    void readCommands();

    std::thread m_reader; // standard input has no notification that works on every system
};

} // namespace plum
