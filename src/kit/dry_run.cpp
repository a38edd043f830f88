#include "kit/dry_run.h"

#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize screenSize{1280, 800};
constexpr int fetched = 200; // what a server answers that all is well

} // namespace

DryRun::DryRun(const Places &places, Print print, Print printError)
    : m_print(std::move(print))
    , m_printError(std::move(printError))
    , m_scratchFolder(places.scratchFolder)
    , m_paths(places.paths, places.scratchFolder)
    , m_platform(m_recording, m_paths)
    , m_waiter(m_recording.log)
    , m_writer(m_recording.log)
    , m_http(m_recording.log)
    , m_programs(m_recording.log)
    , m_storePage(m_recording.log)
    , m_notices(m_recording.log)
    , m_scripts({.platform = recorded(places),
          .shell = m_recordedShell ? static_cast<Shell &>(*m_recordedShell) : m_recording.shell(),
          .launcher = *this,
          .storePage = m_storePage,
          .executableName = u"plumkit"_s,
          .stop = &m_stop,
          .searches = m_replay ? &*m_replay : nullptr,
          .sights = m_replay ? &*m_replay : nullptr,
          .waiter = &m_waiter,
          .http = &m_http,
          .programs = &m_programs,
          .clock = [this] { return static_cast<qint64>(m_waiter.elapsed); },
          .notices = &m_notices})
{
    recording::RecordingScreen &screen = m_recording.screen();
    screen.size = screenSize;
    screen.pixels.assign(static_cast<std::size_t>(screenSize.width()) * screenSize.height(), 0);
    m_http.answer.status = fetched;
    m_programs.result.outcome = ProgramResult::Outcome::Ended;
    m_waiter.onWait = [this] {
        if (m_breathe)
            m_breathe();
        m_stop.check();
    };
}

DryRun::~DryRun() = default;

Platform &DryRun::recorded(const Places &places)
{
    if (!places.record)
        return m_platform;
    m_replay.emplace(*places.record, m_recording);
    // What the record has left out it has left out; nothing here is kept.
    m_replay->setKeeps(FlightRecorder::Keeps::Everything);
    m_recordedShell.emplace(m_recording.shell(), *m_replay);
    return m_recordedPlatform.emplace(m_platform, *m_replay);
}

Status DryRun::run(const DryOptions &options)
{
    m_answers = options.answers;
    m_typed = QFileInfo(options.file).completeBaseName() + u' ' + options.typed;
    m_eventsLeft = options.mostEvents;
    if (m_replay)
        m_scripts.state().observer = &*m_replay;
    if (options.allowsNetwork)
        m_http.reaching = &m_network.emplace();
    m_recording.log.onAdd = [this](const QString &event) { note(event); };
    const QString path = QFileInfo(options.file).absoluteFilePath();
    // A script's own place is the real one where its name is that of a script.
    RunStart &starts = m_scripts.starts();
    if (!(path.endsWith(".wf"_L1) ? starts.prepareCommandLine(path).loaded : starts.prepareFile(path))) {
        m_printError(u"plumkit: %1 cannot be read"_s.arg(options.file));
        return Unusable;
    }
    for (const auto &[name, value] : options.variables) {
        m_scripts.state().vardict.SetVar(name, value);
        m_scripts.presetVariable(name, value);
    }
    const Status status = carryOut(options, path);
    if (m_replay)
        printComparison();
    return status;
}

Status DryRun::carryOut(const DryOptions &options, const QString &path)
{
    try {
        runToItsEnd();
    } catch (const RunTimeError &error) {
        m_printError(u"%1:%2:1: run-time error %3: %4"_s.arg(options.file)
                         .arg(error.line().value_or(0) + 1)
                         .arg(error.number())
                         .arg(error.description()));
        return Failed;
    } catch (const ScriptError &error) {
        for (ScriptMistake mistake : error.mistakes()) {
            if (mistake.file == path)
                mistake.file = options.file;
            m_printError(mistake.toText());
        }
        return error.gaveUp() ? Stopped : Failed;
    } catch (const RunStopped &) {
        if (m_eventsLeft > 0)
            return Stopped;
        m_printError(u"plumkit: %1 did not end within %2 events"_s.arg(options.file).arg(options.mostEvents));
        return TimedOut;
    }
    return m_gaveUp ? Stopped : Done;
}

void DryRun::runToItsEnd()
{
    m_scripts.starts().runAll();
    while (m_shown && !m_hasEnded) {
        if (!answer(*std::exchange(m_shown, std::nullopt)))
            return;
    }
}

// False when the run rests for ever: a question of edition 1 that was not answered.
bool DryRun::answer(const Shown &shown)
{
    std::optional<QString> given;
    if (shown.isQuestion && !m_answers.isEmpty())
        given = m_answers.takeFirst();
    else if (shown.isQuestion && m_replay)
        given = m_replay->answerFor(shown.variable);
    const bool isAnswered = given.has_value();
    const QString text = given.value_or(QString());
    if (shown.isQuestion && !m_replay)
        m_print(isAnswered ? u"   answer "_s + text : u"   no answer"_s);
    if (shown.ticket != 0) {
        m_scripts.starts().answer(shown.ticket, {isAnswered, shown.variable, text});
        return true;
    }
    if (shown.isQuestion && !isAnswered) {
        m_gaveUp = true;
        return false;
    }
    if (shown.isQuestion)
        m_scripts.state().takeAnswer(shown.variable, text);
    m_scripts.starts().resume();
    return true;
}

void DryRun::note(const QString &event)
{
    if (!m_replay)
        m_print(u"%1: %2"_s.arg(m_scripts.state().currentLine + 1).arg(event));
    if (--m_eventsLeft == 0)
        m_stop.raise();
}

// Copies of files stand for the files.
QString DryRun::withoutScratch(QString text) const
{
    return text.remove(m_scratchFolder);
}

void DryRun::printComparison()
{
    const auto print = [this](QChar mark, const FlightEntry &entry) {
        m_print(u"%1 %2: "_s.arg(mark).arg(entry.line.number) + entry.line.text);
    };
    const auto printOutcome = [this](const QString &head, const FlightEntry &entry) {
        m_print(u"    "_s + head + withoutScratch(outcomeOf(entry).join(u"; "_s)));
    };
    // A line that only computes may have been there, unseen.
    const bool hasGaps = m_replay->hasGaps();
    for (const ComparedLine &line : compareRuns(m_replay->record().entries(), m_replay->log().entries())) {
        if (!line.before && line.now->deeds.isEmpty() && hasGaps) {
            print(u' ', *line.now);
        } else if (!line.before) {
            print(u'+', *line.now);
            printOutcome(u"now: "_s, *line.now);
        } else if (!line.now) {
            print(u'-', *line.before);
            printOutcome(u"was: "_s, *line.before);
        } else if (line.differs(m_scratchFolder)) {
            print(u'~', *line.now);
            printOutcome(u"was: "_s, *line.before);
            printOutcome(u"now: "_s, *line.now);
        } else {
            print(u' ', *line.now);
        }
    }
}

void DryRun::showInput(const QString &prompt, const QString &variable)
{
    m_writer.showInput(prompt, variable);
    m_shown = Shown{m_scripts.starts().asking(), true, variable};
}

void DryRun::showTip(const QString &text)
{
    m_writer.showTip(text);
    m_shown = Shown{m_scripts.starts().asking()};
}

} // namespace plum::kit
