#include "platform/launcher_call.h"

#include "platform/linux/process_signals.h"

#include <csignal>
#include <utility>

namespace plum {

namespace {

// A process without a handler ignores them.
constexpr int signalOf(LauncherCall::Kind kind)
{
    // A terminal that changes its size sends the second one as well: a look at what was left does no harm.
    return kind == LauncherCall::Kind::Fetch ? SIGURG : SIGWINCH;
}

class SignalledCall final : public LauncherCall
{
public:
    explicit SignalledCall(std::function<void(Kind)> answer)
        : m_answer(std::move(answer))
    {
    }

private:
    std::function<void(Kind)> m_answer;
    ProcessSignals m_fetch{{signalOf(Kind::Fetch)}, [this] { m_answer(Kind::Fetch); }};
    ProcessSignals m_requests{{signalOf(Kind::Requests)}, [this] { m_answer(Kind::Requests); }};
};

} // namespace

std::unique_ptr<LauncherCall> LauncherCall::listen(std::function<void(Kind kind)> answer)
{
    return std::make_unique<SignalledCall>(std::move(answer));
}

bool LauncherCall::call(qint64 process, Kind kind)
{
    return kill(static_cast<pid_t>(process), signalOf(kind)) == 0;
}

} // namespace plum
