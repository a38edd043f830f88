#pragma once

#include "engine/launcher.h"
#include "engine/waiter.h"
#include "platform/recording/recording_platform.h"

#include <functional>

namespace plum::recording {

// A wait that takes no time. `onWait` stands for whatever the user does meanwhile.
class RecordingWaiter final : public Waiter
{
public:
    explicit RecordingWaiter(Log &log)
        : m_log(log)
    {
    }

    void Wait(double milliseconds) override;
    void Wait(const QString &milliseconds) override;
    void Wait(double milliseconds, const std::function<bool()> &isOver) override;

    std::function<void()> onWait;
    bool records = true;
    double elapsed = 0; // milliseconds, all waits together

private:
    Log &m_log;
};

class RecordingLauncher final : public Launcher
{
public:
    explicit RecordingLauncher(Log &log)
        : m_log(log)
    {
    }

    QString keywordBoxText() const override { return keywordBox; }
    QString inputEntryText() const override { return inputEntry; }
    void showInput(const QString &prompt, const QString &variable) override;
    void showTip(const QString &text) override;
    void showMessage(const Message &message) override;
    void hideLauncher() override { m_log.add(QStringLiteral("hide launcher")); }
    void endProcess() override { m_log.add(QStringLiteral("end process")); }

    QString keywordBox;
    QString inputEntry;

private:
    Log &m_log;
};

} // namespace plum::recording
