#include "kit/debug_session.h"

#include "kit/dry_run.h"
#include "kit/script_run.h"
#include "platform/stop_signal.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include <cstdio>
#include <cstdlib>
#include <thread>
#include <utility>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

// A dry run never waits; it lets messages come this often, in milliseconds.
constexpr qint64 breathInterval = 20;

// These are not to wait for a line that lasts.
bool endsTheRun(const QJsonObject &message)
{
    const QString command = message[u"command"_s].toString();
    return command == "terminate"_L1 || command == "disconnect"_L1;
}

} // namespace

DebugSession::DebugSession(const QString &programPath, bool hasDesktop, const TalkFiles &files)
    : m_messages(m_input, m_output)
    , m_run(std::make_unique<ScriptRun>(programPath, hasDesktop))
    , m_server({.vocabulary = m_run->vocabulary(),
          .send = [this](const QJsonObject &message) { m_messages.write(message); },
          .start = [this](const LaunchRequest &request) { start(request); },
          .hold = [this](const std::function<bool()> &isOver) { hold(isOver); },
          .stop = [this] { m_stop.load()->raise(); },
          .letGo = [this] { letGo(); }})
{
    const bool isOpen = m_input.open(files.input, QIODevice::ReadOnly | QIODevice::Unbuffered)
        && m_output.open(files.output, QIODevice::WriteOnly | QIODevice::Unbuffered);
    if (!isOpen)
        std::exit(Unusable);
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, this, &DebugSession::outOfTime);
}

DebugSession::~DebugSession() = default;

void DebugSession::serve()
{
    std::thread([this] { read(); }).detach();
    QCoreApplication::exec();
    endProcess(false);
}

// In a thread of its own, which ends with the process.
void DebugSession::read()
{
    using Kind = ReceivedMessage::Kind;
    for (;;) {
        const ReceivedMessage message = m_messages.read();
        const bool isLast = message.kind == Kind::End || message.kind == Kind::NoMessage;
        if (StopSignal *stop = m_stop; stop && (isLast || endsTheRun(message.content)))
            stop->raise();
        {
            const std::lock_guard lock(m_hearing);
            m_heard.push_back(message);
        }
        QMetaObject::invokeMethod(
            this, [this] { takeAll(); }, Qt::QueuedConnection);
        if (isLast)
            return;
    }
}

std::optional<ReceivedMessage> DebugSession::nextHeard()
{
    const std::lock_guard lock(m_hearing);
    if (m_heard.empty())
        return {};
    ReceivedMessage message = std::move(m_heard.front());
    m_heard.pop_front();
    return message;
}

// What is asked of a run may let the event loop go on; the server takes one message after the other.
void DebugSession::takeAll()
{
    if (std::exchange(m_isTaking, true))
        return;
    while (const std::optional<ReceivedMessage> message = nextHeard())
        take(*message);
    m_isTaking = false;
}

void DebugSession::take(const ReceivedMessage &message)
{
    switch (message.kind) {
    case ReceivedMessage::Kind::Message:
        m_server.take(message.content);
        if (m_server.hasEnded())
            endProcess(true);
        return;
    case ReceivedMessage::Kind::NoObject:
        m_server.refuse(u"what came is no JSON object"_s);
        return;
    case ReceivedMessage::Kind::NoMessage:
        m_server.refuse(u"what came has no usable Content-Length; nothing more is read"_s);
        endProcess(false);
    case ReceivedMessage::Kind::End:
        endProcess(false);
    }
}

void DebugSession::start(const LaunchRequest &request)
{
    m_request = request;
    if (request.isDry) {
        m_scratch.emplace();
        m_dryRun = std::make_unique<DryRun>(
            DryRun::Places{m_run->paths(), m_scratch->path()},
            [this](const QString &line) { m_server.print(DebugServer::Stream::Output, line); },
            [this](const QString &line) { m_server.print(DebugServer::Stream::Errors, line); });
    }
    m_stop = request.isDry ? &m_dryRun->stopSignal() : &m_run->stopSignal();
    if (request.timeout)
        m_timeout.start(std::chrono::milliseconds(qint64(*request.timeout * 1000)));
    QMetaObject::invokeMethod(
        this, [this] { m_request.isDry ? startDryRun() : startRun(); }, Qt::QueuedConnection);
}

void DebugSession::startRun()
{
    m_run->setFollower({.observer = m_server.observer(),
        .print = [this](const QString &line) { m_server.print(DebugServer::Stream::Errors, line); },
        .ended = [this](Status status) { runEnded(status); }});
    RunOptions options;
    options.file = m_request.program;
    options.variables = m_request.variables;
    m_run->start(options);
}

void DebugSession::startDryRun()
{
    m_dryRun->setObserver(m_server.observer());
    m_sinceBreath.start();
    m_dryRun->setBreath([this] { breathe(); });
    DryOptions options;
    options.file = m_request.program;
    options.variables = m_request.variables;
    options.answers = m_request.answers;
    options.typed = m_request.typed;
    runEnded(m_dryRun->run(options));
}

void DebugSession::breathe()
{
    if (m_sinceBreath.elapsed() < breathInterval)
        return;
    QCoreApplication::processEvents();
    m_sinceBreath.start();
}

void DebugSession::hold(const std::function<bool()> &isOver)
{
    const std::chrono::milliseconds left = m_timeout.remainingTimeAsDuration();
    const bool isTimed = m_timeout.isActive();
    m_timeout.stop();
    const StopSignal &stop = *m_stop;
    // An event that has been posted does not wake a loop that begins inside the one before it, so what has
    // been heard is looked at first.
    for (takeAll(); !isOver(); takeAll()) {
        stop.check();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    if (isTimed)
        m_timeout.start(left);
}

void DebugSession::outOfTime()
{
    m_isLate = true;
    m_server.print(DebugServer::Stream::Errors, u"plumkit: %1 did not end in time"_s.arg(m_request.program));
    m_stop.load()->raise();
}

// The debugger may have the run's last words read before it ends the talk.
void DebugSession::runEnded(Status status)
{
    if (std::exchange(m_isOver, true))
        endProcess(false);
    m_timeout.stop();
    m_stop = nullptr;
    m_server.runEnded(m_isLate && status == Stopped ? TimedOut : status);
    // What the server was at is not come back to, if the run has ended inside it.
    m_isTaking = false;
    for (;;) {
        takeAll();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void DebugSession::letGo()
{
    m_run->letGo();
}

// Without unwinding: a script may be anywhere inside nested waits.
void DebugSession::endProcess(bool isInOrder)
{
    letGo();
    m_scratch.reset();
    std::fflush(nullptr);
    std::_Exit(isInOrder ? Done : Failed);
}

} // namespace plum::kit
