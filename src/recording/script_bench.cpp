#include "recording/script_bench.h"

#include "recording/recording_commands.h"

namespace plum::recording {

struct ScriptBench::Replaced
{
    explicit Replaced(Log &log)
        : http(log)
        , programs(log)
        , storePage(log)
        , notices(log)
    {
    }

    RecordingHttpClient http;
    RecordingProgramRunner programs;
    RecordingStorePage storePage;
    RecordingNotices notices;
};

ScriptBench::ScriptBench(std::function<void(const QString &sentence)> refused)
    : m_replaced(std::make_unique<Replaced>(platform.log))
    , http(m_replaced->http)
    , programs(m_replaced->programs)
    , system({.platform = platform,
          .shell = platform.shell(),
          .launcher = launcher,
          .storePage = m_replaced->storePage,
          .executableName = QStringLiteral("plum"),
          .refused = std::move(refused),
          .waiter = &waiter,
          .http = &m_replaced->http,
          .programs = &m_replaced->programs,
          .clock = [this] { return static_cast<qint64>(waiter.elapsed); },
          .notices = &m_replaced->notices})
{
    state.runctx[1] = QStringLiteral("bao");
}

ScriptBench::~ScriptBench() = default;

void ScriptBench::run(const QStringList &lines)
{
    state.runlist = lines;
    state.runidx[0] = 0;
    state.runidx[1] = static_cast<qint16>(lines.size() - 1);
    loop.RunLines(state.runidx[0], state.runidx[1]);
}

QStringList ScriptBench::eventsOf(const QString &line)
{
    platform.log.clear();
    runKeepingVariables({line});
    QStringList lines = platform.log.lines();
    lines.removeFirst();
    lines.resize(lines.size() - 2);
    return lines;
}

} // namespace plum::recording
