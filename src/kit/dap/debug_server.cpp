#include "kit/dap/debug_server.h"

#include <QScopeGuard>

#include <algorithm>
#include <array>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr int theThread = 1; // a script has one

constexpr QStringView uncaughtErrors = u"uncaught";
constexpr QStringView caughtErrors = u"caught";

QJsonObject capabilities()
{
    const auto filter = [](QStringView name, const QString &label, bool isOn) {
        return QJsonObject{{u"filter"_s, name.toString()}, {u"label"_s, label}, {u"default"_s, isOn}};
    };
    return {{u"supportsConfigurationDoneRequest"_s, true}, {u"supportsEvaluateForHovers"_s, true},
        {u"supportsSetVariable"_s, true}, {u"supportsTerminateRequest"_s, true},
        {u"supportsExceptionInfoRequest"_s, true}, {u"supportsBreakpointLocationsRequest"_s, true},
        {u"exceptionBreakpointFilters"_s,
            QJsonArray{filter(uncaughtErrors, u"Errors"_s, true),
                filter(caughtErrors, u"Errors that the script catches"_s, false)}}};
}

QString wordFor(RunControl::Cause cause)
{
    constexpr std::array words{"entry", "breakpoint", "step", "pause", "exception"};
    return QString::fromLatin1(words[static_cast<std::size_t>(cause)]);
}

} // namespace

DebugServer::DebugServer(Needs needs)
    : m_use(std::move(needs))
    , m_control([this](const RunControl::Hold &hold) { return held(hold); })
    , m_sources(m_use.vocabulary, m_control)
{
}

std::span<const DebugServer::Row> DebugServer::rows()
{
    static constexpr std::array all{
        Row{u"initialize", &DebugServer::initialize},
        Row{u"launch", &DebugServer::launch},
        Row{u"configurationDone", &DebugServer::configurationDone},
        Row{u"setBreakpoints", &DebugServer::setBreakpoints},
        Row{u"breakpointLocations", &DebugServer::breakpointLocations},
        Row{u"setExceptionBreakpoints", &DebugServer::setExceptionBreakpoints},
        Row{u"threads", &DebugServer::threads},
        Row{u"stackTrace", &DebugServer::stackTrace},
        Row{u"scopes", &DebugServer::scopes},
        Row{u"variables", &DebugServer::variables},
        Row{u"setVariable", &DebugServer::setVariable},
        Row{u"evaluate", &DebugServer::evaluate},
        Row{u"exceptionInfo", &DebugServer::exceptionInfo},
        Row{u"continue", &DebugServer::goOnToTheNextHold},
        Row{u"next", &DebugServer::next},
        Row{u"stepIn", &DebugServer::stepIn},
        Row{u"stepOut", &DebugServer::stepOut},
        Row{u"pause", &DebugServer::pause},
        Row{u"terminate", &DebugServer::terminate},
        Row{u"disconnect", &DebugServer::disconnect},
    };
    return all;
}

void DebugServer::take(const QJsonObject &message)
{
    const QString type = message[u"type"_s].toString();
    if (type == "response"_L1 || type == "event"_L1) // nothing was asked
        return;
    if (type != "request"_L1) {
        respondWithProblem(message, u"a message is of the type request"_s);
        return;
    }
    const QString command = message[u"command"_s].toString();
    const QJsonValue arguments = message[u"arguments"_s];
    try {
        if (!arguments.isUndefined() && !arguments.isNull() && !arguments.isObject())
            throw RequestProblem(u"arguments is an object"_s);
        respond(message, answerTo(command, RequestArguments(arguments.toObject())));
    } catch (const RequestProblem &problem) {
        respondWithProblem(message, problem.reason());
        return;
    }
    doAfter(command);
}

void DebugServer::refuse(const QString &reason)
{
    respondWithProblem({}, reason);
}

QJsonObject DebugServer::answerTo(const QString &command, const RequestArguments &arguments)
{
    const auto row = std::ranges::find(rows(), QStringView(command), &Row::command);
    if (row == rows().end())
        throw RequestProblem(u"there is no request \"%1\""_s.arg(command));
    if (m_state == State::New && command != "initialize"_L1 && command != "disconnect"_L1)
        throw RequestProblem(u"the first request is initialize"_s);
    return (this->*row->answer)(arguments);
}

// What follows the answer to a request.
void DebugServer::doAfter(const QString &command)
{
    // The lines that run depend on the script, so breakpoints come behind it.
    if (command == "launch"_L1)
        sendEvent(u"initialized"_s);
    if (m_state == State::Launched && m_isConfigured) {
        m_state = State::Running;
        m_use.start(m_launch);
    }
}

void DebugServer::send(QJsonObject message)
{
    message[u"seq"_s] = ++m_lastSent;
    m_use.send(message);
}

void DebugServer::respond(const QJsonObject &request, const QJsonObject &body)
{
    send({{u"type"_s, u"response"_s}, {u"request_seq"_s, request[u"seq"_s].toInt()}, {u"success"_s, true},
        {u"command"_s, request[u"command"_s].toString()}, {u"body"_s, body}});
}

void DebugServer::respondWithProblem(const QJsonObject &request, const QString &reason)
{
    const QJsonObject error{{u"id"_s, 1},
        {u"format"_s, QString(reason).replace(u'{', u'(').replace(u'}', u')')}, {u"showUser"_s, true}};
    send({{u"type"_s, u"response"_s}, {u"request_seq"_s, request[u"seq"_s].toInt()}, {u"success"_s, false},
        {u"command"_s, request[u"command"_s].toString()}, {u"message"_s, reason},
        {u"body"_s, QJsonObject{{u"error"_s, error}}}});
}

void DebugServer::sendEvent(const QString &name, const QJsonObject &body)
{
    QJsonObject event{{u"type"_s, u"event"_s}, {u"event"_s, name}};
    if (!body.isEmpty())
        event[u"body"_s] = body;
    send(event);
}

void DebugServer::print(Stream stream, const QString &line)
{
    sendEvent(u"output"_s,
        {{u"category"_s, stream == Stream::Output ? u"stdout"_s : u"stderr"_s},
            {u"output"_s, QString(line + u'\n')}});
}

void DebugServer::runEnded(int status)
{
    m_state = State::Over;
    sendEvent(u"exited"_s, {{u"exitCode"_s, status}});
    sendEvent(u"terminated"_s);
}

RunControl::Going DebugServer::held(const RunControl::Hold &hold)
{
    const HeldRun run(hold, m_use.vocabulary, m_sources, m_counting);
    m_held = &run;
    const auto leave = qScopeGuard([this] { m_held = nullptr; });
    m_going.reset();
    const RunPlace place = hold.run.place(0);
    QJsonObject body{
        {u"reason"_s, wordFor(hold.cause)}, {u"threadId"_s, theThread}, {u"allThreadsStopped"_s, true}};
    if (hold.cause == RunControl::Cause::Error)
        body[u"text"_s] = hold.reason;
    if (hold.cause == RunControl::Cause::Breakpoint) {
        QJsonArray ids;
        for (const int id : m_sources.idsAt(place.file, place.line))
            ids += id;
        body[u"hitBreakpointIds"_s] = ids;
    }
    sendEvent(u"stopped"_s, body);
    m_use.hold([this] { return m_going.has_value(); });
    return m_going.value_or(RunControl::Going::On);
}

const HeldRun &DebugServer::heldRun() const
{
    if (!m_held || m_going)
        throw RequestProblem(u"the run is not held"_s);
    return *m_held;
}

QJsonObject DebugServer::initialize(const RequestArguments &arguments)
{
    if (m_state != State::New)
        throw RequestProblem(u"this has been said already"_s);
    if (arguments.textOr(u"pathFormat"_s, u"path"_s) != "path"_L1)
        throw RequestProblem(u"files are named by their paths, not in another format"_s);
    m_counting = {
        arguments.flag(u"linesStartAt1"_s, true) ? 1 : 0, arguments.flag(u"columnsStartAt1"_s, true) ? 1 : 0};
    m_state = State::Initialized;
    return capabilities();
}

QJsonObject DebugServer::launch(const RequestArguments &arguments)
{
    if (m_state != State::Initialized)
        throw RequestProblem(u"there is a run already"_s);
    m_launch = LaunchRequest::from(arguments);
    m_sources.setProgram(m_launch.program);
    if (m_launch.stopsOnEntry && m_launch.isHeld)
        m_control.holdAtEntry();
    m_control.setEnabled(m_launch.isHeld);
    m_state = State::Launched;
    return {};
}

QJsonObject DebugServer::configurationDone(const RequestArguments &)
{
    m_isConfigured = true;
    return {};
}

int DebugServer::lineFrom(const RequestArguments &arguments) const
{
    return arguments.number(u"line"_s) + 1 - m_counting.firstLine;
}

QJsonObject DebugServer::setBreakpoints(const RequestArguments &arguments)
{
    const RequestArguments source = arguments.object(u"source"_s);
    const QString path = source.text(u"path"_s);
    QList<int> lines;
    for (const RequestArguments &each : arguments.objects(u"breakpoints"_s))
        lines += lineFrom(each);
    QJsonArray placed;
    for (const SourceBreakpoints::Breakpoint &each : m_sources.set(path, lines)) {
        QJsonObject breakpoint{{u"id"_s, each.id}, {u"verified"_s, each.line != 0},
            {u"source"_s, QJsonObject{{u"path"_s, path}}}};
        if (each.line != 0)
            breakpoint[u"line"_s] = each.line - 1 + m_counting.firstLine;
        else
            breakpoint[u"message"_s] = each.problem;
        placed += breakpoint;
    }
    return {{u"breakpoints"_s, placed}};
}

QJsonObject DebugServer::breakpointLocations(const RequestArguments &arguments)
{
    const std::optional<QList<int>> runnable
        = m_sources.runnable(arguments.object(u"source"_s).text(u"path"_s));
    const int first = lineFrom(arguments);
    const int last
        = arguments.numberOr(u"endLine"_s, first - 1 + m_counting.firstLine) + 1 - m_counting.firstLine;
    QJsonArray locations;
    for (const int line : runnable.value_or(QList<int>())) {
        if (line >= first && line <= last)
            locations += QJsonObject{{u"line"_s, line - 1 + m_counting.firstLine}};
    }
    return {{u"breakpoints"_s, locations}};
}

QJsonObject DebugServer::setExceptionBreakpoints(const RequestArguments &arguments)
{
    RunControl::Errors errors;
    for (const QString &filter : arguments.texts(u"filters"_s)) {
        if (filter == uncaughtErrors)
            errors.uncaught = true;
        else if (filter == caughtErrors)
            errors.caught = true;
        else
            throw RequestProblem(u"there is no filter \"%1\""_s.arg(filter));
    }
    m_control.setHoldsAtErrors(errors);
    return {};
}

QJsonObject DebugServer::threads(const RequestArguments &)
{
    return {{u"threads"_s, QJsonArray{QJsonObject{{u"id"_s, theThread}, {u"name"_s, u"script"_s}}}}};
}

void DebugServer::goOn(RunControl::Going going)
{
    heldRun();
    m_going = going;
}

QJsonObject DebugServer::goOnToTheNextHold(const RequestArguments &)
{
    goOn(RunControl::Going::On);
    return {{u"allThreadsContinued"_s, true}};
}

QJsonObject DebugServer::next(const RequestArguments &)
{
    goOn(RunControl::Going::Over);
    return {};
}

QJsonObject DebugServer::stepIn(const RequestArguments &)
{
    goOn(RunControl::Going::Into);
    return {};
}

QJsonObject DebugServer::stepOut(const RequestArguments &)
{
    goOn(RunControl::Going::Out);
    return {};
}

QJsonObject DebugServer::pause(const RequestArguments &)
{
    if (m_state != State::Running)
        throw RequestProblem(u"there is no run"_s);
    if (!m_held || m_going)
        m_control.pause();
    return {};
}

// The run may have ended while this was on its way.
QJsonObject DebugServer::terminate(const RequestArguments &)
{
    if (m_state != State::Running && m_state != State::Over)
        throw RequestProblem(u"there is no run"_s);
    if (m_state == State::Running)
        m_use.stop();
    return {};
}

// The keys are up when the editor hears the answer.
QJsonObject DebugServer::disconnect(const RequestArguments &)
{
    m_use.letGo();
    m_hasEnded = true;
    return {};
}

} // namespace plum::kit
