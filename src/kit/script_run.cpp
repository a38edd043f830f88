#include "kit/script_run.h"

#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "flight/flight_page.h"
#include "library/launcher_options.h"
#include "ui/asking/message_boxes.h"
#include "ui/asking/shurubox.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <thread>
#include <utility>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

// How long a run that is to end may take to get to it.
constexpr std::chrono::seconds grace{2};

} // namespace

ScriptRun::ScriptRun(const QString &programPath, bool hasDesktop)
    : m_platform(createPlatform(programPath))
    , m_flight(*m_platform, m_platform->shell())
    , m_hand(*m_platform, m_stop, [] { return QString(); })
    , m_hasDesktop(hasDesktop)
    , m_scripts({.platform = m_flight.platform,
          .shell = m_flight.shell,
          .launcher = *this,
          .storePage = m_storePage,
          .executableName = u"plumkit"_s,
          .stop = &m_stop,
          .gate = &m_hand.gate(),
          .searches = &m_flight.recorder})
{
    m_scripts.state().observer = &m_flight.recorder;
    m_flight.recorder.setStop(m_stop);
    // A run that is followed and has ended may hear of its stop once more.
    QObject::connect(&m_stop, &StopSignal::raised, &m_stop, [this] {
        if (!m_isEnding)
            end(Stopped);
    });
    m_hand.gate().onPause([this](InputPause pause) {
        print(m_file
            + (pause.reason == InputPause::Reason::Hand
                    ? u": waits while you use the mouse or the keyboard, and 1.5 seconds more"_s
                    : u": waits until its window is in front again"_s));
    });
    m_platform->onEndRequested([this] { end(Stopped); });
}

ScriptRun::~ScriptRun()
{
    delete m_box;
}

void ScriptRun::setFollower(Follower follower)
{
    m_scripts.state().observer = &follower.observer;
    m_follower.emplace(std::move(follower));
}

void ScriptRun::print(const QString &line) const
{
    if (m_follower) {
        m_follower->print(line);
        return;
    }
    std::fprintf(stderr, "%s\n", qUtf8Printable(line));
    std::fflush(stderr);
}

void ScriptRun::start(const RunOptions &options)
{
    m_file = options.file;
    m_trace = options.trace;
    m_flight.takePicturesWhere([this, isAskedFor = options.takesPictures] {
        return isAskedFor || wantsPictures(m_platform->paths(), m_platform->textCodec());
    });
    if (options.tracesSecrets)
        m_flight.recorder.setKeeps(FlightRecorder::Keeps::Everything);
    if (options.isScoped)
        m_hand.setScoped();
    if (!m_scripts.starts().prepareFile(options.file)) {
        print(u"plumkit: %1 cannot be read"_s.arg(options.file));
        end(Unusable);
    }
    for (const auto &[name, value] : options.variables) {
        m_scripts.state().vardict.SetVar(name, value);
        m_scripts.presetVariable(name, value);
    }
    if (options.timeout)
        endAfter(std::chrono::milliseconds(qint64(*options.timeout * 1000)));
    m_hand.setWatching(true);
    guarded([this] { m_scripts.starts().runAll(); });
}

// A script may be inside something that never comes back to the event loop; then a second clock decides.
void ScriptRun::endAfter(std::chrono::milliseconds patience)
{
    const QString late = u"plumkit: %1 did not end in time"_s.arg(m_file);
    QTimer::singleShot(patience, Qt::PreciseTimer, qApp, [this, late] {
        print(late);
        end(TimedOut);
    });
    std::thread([patience, line = late.toUtf8()] {
        std::this_thread::sleep_for(patience + grace);
        std::fprintf(stderr, "%s\n", line.constData());
        std::fflush(stderr);
        std::_Exit(TimedOut);
    }).detach();
}

// A run that neither waits nor has ended the process has reached its end in another way: it has no lines.
void ScriptRun::guarded(const std::function<void()> &run)
{
    try {
        run();
    } catch (const RunTimeError &error) {
        fail(u"%1:%2:1"_s.arg(m_file).arg(error.line().value_or(0) + 1),
            u"run-time error %1: %2"_s.arg(error.number()).arg(error.description()));
    } catch (const ScriptError &error) {
        for (const ScriptMistake &mistake : error.mistakes())
            print(mistake.toText());
        m_failure = error.toText();
        end(error.gaveUp() ? Stopped : Failed);
    } catch (const RunStopped &) {
        end(Stopped);
    }
    if (!m_waits)
        end(Done);
}

void ScriptRun::fail(const QString &place, const QString &reason)
{
    m_failure = place + u": "_s + reason;
    print(m_failure);
    end(Failed);
}

void ScriptRun::writeTrace(Status status)
{
    if (status == Failed)
        m_flight.recorder.noteOutcome(m_failure);
    else if (status == Stopped)
        m_flight.recorder.noteOutcome(u"The run was stopped or given up."_s);
    else if (status == TimedOut)
        m_flight.recorder.noteOutcome(u"The run did not end in time."_s);
    const FlightLog &log = m_flight.recorder.log();
    const auto page = [&] { return flightPage(log, m_flight.recorder.film()); };
    if (!m_trace.isEmpty() && !writeFlightPage(m_trace, page()))
        print(u"plumkit: %1 cannot be written"_s.arg(m_trace));
    else if (m_trace.isEmpty() && !log.outcome().isEmpty() && !log.entries().empty())
        writeFlightPage(lastFlightPath(), page());
}

void ScriptRun::letGo()
{
    if (std::exchange(m_hasLetGo, true))
        return;
    m_hand.setWatching(false);
    if (m_box)
        m_box->hide();
    m_platform->releaseDesktop();
}

// Without unwinding: a script may be anywhere inside nested waits.
void ScriptRun::end(Status status)
{
    m_isEnding = true;
    // A long page takes a while, which keys are not to stay down for.
    letGo();
    if (m_follower)
        m_follower->ended(status);
    writeTrace(status);
    std::fflush(nullptr);
    std::_Exit(status);
}

QString ScriptRun::inputEntryText() const
{
    return m_box ? m_box->entryText() : QString();
}

shurubox &ScriptRun::freshBox()
{
    if (m_box) {
        m_box->disconnect();
        m_box->close();
    }
    m_box = new shurubox(m_platform->shell(),
        {.exists = [](const QString &) { return false; },
            .faultOf = [](const QString &) { return QString(); }},
        nullptr);
    QObject::connect(
        m_box, &shurubox::inputConfirmed, m_box, [this](const QString &variable, const QString &text) {
            goOn({true, variable, text}, false);
        });
    QObject::connect(m_box, &shurubox::inputClosed, m_box, [this] { goOn({}, true); });
    QObject::connect(m_box, &shurubox::dismissed, m_box,
        [this](bool withEnter, const QString &variable, const QString &text) {
            goOn({withEnter, variable, text}, true);
        });
    return *m_box;
}

// What became of the tip or question. Edition 1 goes on with a confirmed question alone.
void ScriptRun::goOn(const Answer &answer, bool isClosed)
{
    m_waits = false;
    if (m_asking != 0) {
        guarded([&] { m_scripts.starts().answer(std::exchange(m_asking, 0), answer); });
        return;
    }
    if (isClosed)
        end(m_isQuestion ? Stopped : Done);
    m_scripts.state().takeAnswer(answer.variable, answer.text);
    guarded([this] { m_scripts.starts().resume(); });
}

void ScriptRun::answerWithoutDesktop(bool isQuestion)
{
    QTimer::singleShot(0, [this, isQuestion] {
        if (isQuestion || m_asking != 0) {
            goOn({}, true);
            return;
        }
        m_waits = false;
        guarded([this] { m_scripts.starts().resume(); });
    });
}

void ScriptRun::showInput(const QString &prompt, const QString &variable)
{
    m_asking = m_scripts.starts().asking();
    m_waits = true;
    m_isQuestion = true;
    if (m_hasDesktop) {
        freshBox().showInput(prompt, variable);
        return;
    }
    print(u"%1 asks, and nobody can answer without a display: %2"_s.arg(m_file, prompt));
    answerWithoutDesktop(true);
}

void ScriptRun::showTip(const QString &text)
{
    m_asking = m_scripts.starts().asking();
    m_waits = true;
    m_isQuestion = false;
    if (m_hasDesktop) {
        freshBox().showTip(text);
        return;
    }
    print(u"%1: %2"_s.arg(m_file, text));
    answerWithoutDesktop(false);
}

void ScriptRun::showMessage(const Message &message)
{
    if (m_hasDesktop)
        MessageBoxes().showMessage(message);
    else
        print(u"%1: %2"_s.arg(m_file, message.text));
}

} // namespace plum::kit
