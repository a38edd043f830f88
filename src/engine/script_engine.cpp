#include "engine/script_engine.h"

#include "engine/input_commands.h"
#include "engine/print_commands.h"
#include "engine/set_command.h"
#include "engine/text_commands.h"
#include "engine/time_commands.h"

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

ScriptEngine::ScriptEngine(const Needs &needs)
    : m_files(needs.paths, needs.codec)
    , m_reader({m_state, needs.launcher, needs.clipboard, needs.pointer, needs.shell, needs.folders, m_files})
    , m_loop(m_state, m_reader, needs.waiter, needs.launcher)
    , m_starts(m_state, m_loop, m_files, needs.paths, needs.folders)
{
    add(u"text"_s, std::make_unique<TextCommands>());
    add(u"set"_s, std::make_unique<SetCommand>());
    add(u"time"_s, std::make_unique<TimeCommands>(needs.waiter));
    add(u"print"_s, std::make_unique<PrintCommands>(needs.shell, needs.folders));
    add(u"input"_s, std::make_unique<InputCommands>(InputCommands::Namespace::Input, needs.launcher));
    add(u"me"_s, std::make_unique<InputCommands>(InputCommands::Namespace::Me, needs.launcher));
}

ScriptEngine::~ScriptEngine() = default;

void ScriptEngine::add(const QString &name, std::unique_ptr<Handler> handler)
{
    m_loop.addNamespace(name, *handler);
    const auto known = std::ranges::find(m_namespaces, name, [](const auto &entry) { return entry.first; });
    if (known == m_namespaces.end())
        m_namespaces.emplace_back(name, std::move(handler));
    else
        known->second = std::move(handler);
}

Handler &ScriptEngine::handler(const QString &name) const
{
    const auto known = std::ranges::find(m_namespaces, name, [](const auto &entry) { return entry.first; });
    Q_ASSERT(known != m_namespaces.end());
    return *known->second;
}

ScriptVocabulary ScriptEngine::vocabulary() const
{
    ScriptVocabulary vocabulary;
    vocabulary.add(RunLoop::ownNamespace.toString(), RunLoop::ownCommands());
    for (const auto &[name, handler] : m_namespaces)
        vocabulary.add(name, handler->commands());
    return vocabulary;
}

} // namespace plum
