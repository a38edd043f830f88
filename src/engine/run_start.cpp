#include "engine/run_start.h"

#include "engine/conversions.h"
#include "engine/editions/last_edition.h"
#include "engine/editions/mistake_words.h"
#include "engine/editions/run_observer.h"
#include "engine/editions/script_error.h"
#include "engine/run_loop.h"
#include "engine/run_state.h"
#include "engine/script_folders.h"
#include "engine/text_files.h"
#include "platform/paths.h"

#include <QDir>
#include <QScopeGuard>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

// What is carried out around a run that begins inside it has its own limit back when the run is left.
class RunStart::Outside
{
public:
    explicit Outside(RunState &state)
        : m_state(state)
        , m_limit(std::exchange(state.limit, nullptr))
        , m_refused(std::exchange(state.refused, {}))
    {
    }
    ~Outside()
    {
        m_state.limit = std::move(m_limit);
        m_state.refused = std::move(m_refused);
    }
    Q_DISABLE_COPY_MOVE(Outside)

private:
    RunState &m_state;
    std::shared_ptr<const RunLimit> m_limit;
    QString m_refused;
};

void RunState::addAnswer(const QString &answer)
{
    constexpr qsizetype mostAnswers = 100;
    answers += answer;
    if (answers.size() > mostAnswers)
        answers.removeFirst();
    if (observer)
        observer->answered(answer);
}

void RunState::takeAnswer(const QString &variable, const QString &answer)
{
    addAnswer(answer);
    vardict.SetVar(variable, answer);
    if (observer)
        observer->variableSet(variable, answer);
}

RunStart::CommandLineScript RunStart::prepareCommandLine(const QString &commandLine)
{
    m_state.runidx[2] = 1;
    m_state.runctx[1] = u"jb"_s;
    m_state.currentKeyword.clear();

    QString path = commandLine;
    if (commandLine.startsWith(u'"')) {
        path = commandLine.sliced(1).chopped(commandLine.size() > 1 ? 1 : 0);
        m_state.runctx[0] = path;
        // A quoted script of the library is then looked for below the working folder; kept.
        path.remove(m_folders.apps() + u'\\');
    } else {
        m_state.runctx[0] = path;
    }
    if (!path.endsWith(".wf"_L1))
        path.clear();
    // The running script's path is a full one even when a shell was given a relative name.
    else if (QDir::isRelativePath(m_paths.toSystem(m_state.runctx[0])))
        m_state.runctx[0] = QDir::current().absoluteFilePath(m_state.runctx[0]);

    const bool isLoaded = LoadScript(path);
    if (m_loaded) {
        m_loaded->fullPath = m_state.runctx[0];
        m_loaded->endsProcess = true;
    }
    return {path, isLoaded};
}

bool RunStart::prepareFile(const QString &path)
{
    m_state.runidx[2] = 1;
    m_state.runctx = {QDir::current().absoluteFilePath(m_paths.toSystem(path)), u"jb"_s};
    m_state.currentKeyword.clear();
    const bool isLoaded = LoadScript(path);
    if (m_loaded) {
        m_loaded->fullPath = m_state.runctx[0];
        m_loaded->endsProcess = true;
    }
    return isLoaded;
}

void RunStart::runApp(const QString &keyword, ScriptPath scriptPath)
{
    const Outside outside(m_state);
    const QString fullPath = m_folders.app(keyword) + u"\\main.wf"_s;
    LoadScript(m_folders.appScript(keyword), keyword);
    if (m_loaded) {
        m_loaded->fullPath = fullPath;
        m_loaded->keyword = keyword;
    } else {
        m_state.currentKeyword = keyword;
        if (scriptPath == ScriptPath::Remembered)
            m_state.runctx[0] = fullPath;
    }
    runAll();
}

void RunStart::runAll()
{
    const Outside outside(m_state);
    // A new run ends the one that waits for the user.
    if (m_later)
        m_later->endWaitingRun();
    if (m_state.observer)
        m_state.observer->runBegins(m_loaded ? m_loaded->app() : nameOfRun());
    if (m_loaded) {
        runLater();
        return;
    }
    m_state.runidx[0] = 0;
    m_state.runidx[1] = lastIndex();
    runLines(m_state.runidx[1]);
}

void RunStart::resume()
{
    const Outside outside(m_state);
    qint16 end = lastIndex();
    runLines(end);
}

void RunStart::abandon()
{
    m_state.vardict.removeAll();
    m_state.runlist.clear();
    m_state.runidx[0] = 0;
    if (m_later)
        m_later->endWaitingRun();
}

// The loop reads `end` again after every line.
void RunStart::runLines(qint16 &end)
{
    const bool before = std::exchange(m_innermostIsLater, false);
    ++m_loopsRunning;
    const auto leave = qScopeGuard([&] {
        --m_loopsRunning;
        m_innermostIsLater = before;
    });
    m_loop.RunLines(m_state.runidx[0], end);
}

void RunStart::runLater()
{
    const ScriptStart script = *std::exchange(m_loaded, std::nullopt);
    const AskedEdition asked = askedEdition(script.text);
    if (!m_later || asked.number > lastEdition) {
        throw ScriptError(script.app(),
            {{script.path, asked.line, 1,
                MistakeWords::tr(
                    "this script asks for edition %1 of the language, and this Plum knows edition %2 at most")
                    .arg(asked.number)
                    .arg(lastEdition)}});
    }
    // A run of edition 1 that waits for the user ends as well; one that is going on around this one does not.
    if (m_loopsRunning == 0) {
        m_state.runlist.clear();
        m_state.runidx[0] = 0;
    }
    const bool before = std::exchange(m_innermostIsLater, true);
    const auto leave = qScopeGuard([&] { m_innermostIsLater = before; });
    m_later->run(script);
}

RunTicket RunStart::asking() const
{
    return m_innermostIsLater ? m_later->current() : 0;
}

void RunStart::answer(RunTicket ticket, const Answer &answer)
{
    const Outside outside(m_state);
    if (answer.isGiven)
        m_state.addAnswer(answer.text);
    const bool before = std::exchange(m_innermostIsLater, true);
    const auto leave = qScopeGuard([&] { m_innermostIsLater = before; });
    m_later->resume(ticket, answer);
}

bool RunStart::LoadScript(const QString &path, const QString &keyword)
{
    m_loaded.reset();
    const std::optional<QByteArray> script = m_files.bytes(path);
    auto limit = m_limitOf && script && !keyword.isEmpty() ? m_limitOf(keyword, *script) : nullptr;
    if (script && askedEdition(*script).number > 1) {
        m_loaded = ScriptStart{.text = *script, .path = path, .limit = std::move(limit)};
        return true;
    }
    m_state.runlist = script ? m_files.linesOf(*script) : QStringList();
    m_state.runlistLimit = std::move(limit);
    return script.has_value();
}

QString RunStart::nameOfRun() const
{
    return m_state.currentKeyword.isEmpty() ? m_state.runctx[0] : m_state.currentKeyword;
}

qint16 RunStart::lastIndex() const
{
    return toInt16(static_cast<double>(m_state.runlist.size()) - 1);
}

} // namespace plum
