#pragma once

#include "contract/contract_desktop.h"

#include <QTemporaryDir>

namespace plum::contract {

// What all real desktops have alike: windows and tasks of a real program.
class RealDesktop : public Desktop
{
public:
    std::unique_ptr<Platform> createPlatform() override;
    std::unique_ptr<PeerWindow> openWindow(
        Platform &platform, const QString &title, const QRect &inside) override;
    std::unique_ptr<PeerProgram> start(const QStringList &task) override;

private:
    QString newLog();

    QTemporaryDir m_folder;
    int m_logs = 0;
};

} // namespace plum::contract
