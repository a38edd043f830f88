#include "platform/launcher_call.h"

#include "platform/linux/process_signals.h"

#include <csignal>

namespace plum {

namespace {

// A process without a handler ignores it.
constexpr int callingSignal = SIGURG;

class SignalledCall final : public LauncherCall
{
public:
    explicit SignalledCall(std::function<void()> answer)
        : m_signal({callingSignal}, std::move(answer))
    {
    }

private:
    ProcessSignals m_signal;
};

} // namespace

std::unique_ptr<LauncherCall> LauncherCall::listen(std::function<void()> answer)
{
    return std::make_unique<SignalledCall>(std::move(answer));
}

void LauncherCall::call(qint64 process)
{
    kill(static_cast<pid_t>(process), callingSignal);
}

} // namespace plum
