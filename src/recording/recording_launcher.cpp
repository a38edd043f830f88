#include "recording/recording_launcher.h"

#include "engine/conversions.h"

namespace plum::recording {

using namespace Qt::StringLiterals;

void RecordingWaiter::Wait(double milliseconds)
{
    elapsed += milliseconds;
    if (records)
        m_log.add(u"wait %1"_s.arg(milliseconds, 0, 'g', 15));
    if (onWait)
        onWait();
}

void RecordingWaiter::Wait(const QString &milliseconds)
{
    Wait(toDouble(milliseconds));
}

void RecordingWaiter::Wait(double milliseconds, const std::function<bool()> &isOver)
{
    if (!isOver())
        Wait(milliseconds);
}

void RecordingLauncher::showInput(const QString &prompt, const QString &variable)
{
    m_log.add(u"input %1|%2"_s.arg(prompt, variable));
}

void RecordingLauncher::showTip(const QString &text)
{
    m_log.add(u"tip "_s + text);
}

void RecordingLauncher::showMessage(const Message &message)
{
    m_log.add(u"message %1|%2|%3"_s.arg(message.title, message.text)
                  .arg((message.icon == MessageIcon::Critical ? 16 : 0) + (message.systemModal ? 4096 : 0)));
}

} // namespace plum::recording
