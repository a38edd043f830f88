#include "engine/edition2/runner.h"

#include "engine/argument_reader.h"
#include "engine/edition2/comparisons.h"
#include "engine/edition2/fields.h"
#include "engine/edition2/runner_run.h"
#include "engine/edition2/script_text.h"
#include "engine/edition2/text_pieces.h"
#include "engine/editions/mistake_words.h"
#include "engine/editions/run_observer.h"
#include "engine/launcher.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/text_files.h"
#include "engine/waiter.h"
#include "platform/stop_signal.h"

#include <QScopeGuard>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

// A script that does nothing but count lets the user interface live this often, in milliseconds.
constexpr qint64 breathInterval = 20;

// The other files of an app stand in its folder.
QString besideScript(const QString &script, const QString &file)
{
    const qsizetype slash = std::max(script.lastIndexOf(u'/'), script.lastIndexOf(u'\\'));
    return script.first(slash + 1) + file;
}

} // namespace

Runner::Runner(Needs needs)
    : m_use(std::move(needs))
{
}

Runner::~Runner() = default;

Linked Runner::link(const ScriptStart &script)
{
    if (m_vocabulary.tables().isEmpty())
        m_vocabulary = m_use.vocabulary();
    QList<ScriptMistake> mistakes;
    const auto decoded = [&](const QString &path, const QByteArray &bytes) {
        Decoded text = decode(bytes);
        if (text.badLine != 0)
            mistakes += {path, text.badLine, 1, MistakeWords::tr("this line is no UTF-8")};
        if (m_use.state.observer)
            m_telling.keepText(path, linesOf(text.text));
        return text.text;
    };
    const QString text = decoded(script.path, script.text);
    const LinkNeeds needs{m_vocabulary, m_use.handler, [&](const QString &file) -> std::optional<QString> {
                              const auto bytes = m_use.files.bytes(besideScript(script.fullPath, file));
                              return bytes ? std::optional(decoded(file, *bytes)) : std::nullopt;
                          }};
    Linked linked = edition2::link(script.path, text, needs);
    linked.mistakes = mistakes + linked.mistakes;
    return linked;
}

void Runner::run(const ScriptStart &script)
{
    Linked linked = link(script);
    if (!linked.mistakes.isEmpty())
        throw ScriptError(script.app(), std::move(linked.mistakes));
    auto run = std::make_shared<Run>();
    run->ticket = ++m_last;
    run->script = script;
    run->program = std::move(linked.program);
    run->position.frames.emplace_back().variables = m_presets;
    goOn(run);
}

void Runner::resume(RunTicket ticket, const Answer &answer)
{
    if (!m_waiting || m_waiting->ticket != ticket)
        return;
    const std::shared_ptr<Run> run = std::exchange(m_waiting, nullptr);
    if (run->waitsAs == Next::SuspendForAnswer) {
        if (answer.isGiven) {
            setVariable(run->frame(), answer.variable, answer.text);
        } else {
            const Instruction &asked = run->program->instructions[std::size_t(run->frame().next) - 1];
            recover(*run, {u"given up"_s, asked.file, asked.at, true});
        }
    }
    goOn(run);
}

// What a script reads of its own place has to be its own, also when another run has been going on inside a
// wait.
void Runner::enterContext(const Run &run)
{
    if (m_use.state.currentKeyword != run.script.keyword)
        m_use.state.currentKeyword = run.script.keyword;
    if (m_use.state.runctx[0] != run.script.fullPath)
        m_use.state.runctx[0] = run.script.fullPath;
    if (m_use.state.limit != run.script.limit)
        m_use.state.limit = run.script.limit;
}

void Runner::goOn(const std::shared_ptr<Run> &run)
{
    const auto outside = std::pair(m_use.state.currentKeyword, m_use.state.runctx[0]);
    const RunTicket before = std::exchange(m_current, run->ticket);
    const auto leave = qScopeGuard([&] {
        m_use.state.currentKeyword = outside.first;
        m_use.state.runctx[0] = outside.second;
        m_current = before;
    });
    enterContext(*run);
    m_sinceBreath.start();
    stepUntilDone(run);
}

void Runner::stepUntilDone(const std::shared_ptr<Run> &run)
{
    for (;;) {
        try {
            while (m_use.state.observer ? observedStep(run) : step(run)) {
                if (++m_lines >= linesBetweenLooks) {
                    m_lines = 0;
                    breathe();
                }
            }
            return;
        } catch (const Failure &failure) {
            tellOfFailure(*run, failure);
            recover(*run, failure);
        } catch (RunStopped &stopped) {
            const Instruction &last
                = run->program->instructions[std::size_t(std::max(run->frame().next, 1)) - 1];
            stopped.setPlace(run->placeOf(last));
            throw;
        }
    }
}

void Runner::setVariable(RunPosition::Frame &frame, const QString &name, const QString &value)
{
    frame.variables.SetVar(name, value);
    if (m_use.state.observer)
        m_use.state.observer->variableSet(name, value);
}

void Runner::breathe()
{
    if (m_sinceBreath.elapsed() < breathInterval)
        return;
    m_use.breathe();
    m_sinceBreath.start();
}

// Goes on where the failure is caught, or ends the run with it.
void Runner::recover(Run &run, const Failure &failure)
{
    auto &frames = run.position.frames;
    while (!frames.empty() && frames.back().tries.empty())
        frames.pop_back();
    if (frames.empty()) {
        throw ScriptError(run.script.app(),
            {{run.program->files[failure.file], failure.at.line, failure.at.column, failure.reason}},
            failure.gaveUp);
    }
    RunPosition::Frame &frame = frames.back();
    const RunPosition::Try caught = std::move(frame.tries.back());
    frame.tries.pop_back();
    frame.loops.resize(std::size_t(caught.loops));
    frame.next = caught.target;
    if (!caught.variable.isEmpty())
        setVariable(frame, caught.variable, failure.reason);
}

QString Runner::textOf(const RunPosition::Frame &frame, const Operand &operand) const
{
    switch (operand.kind) {
    case Operand::Kind::Nothing:
        return {};
    case Operand::Kind::Constant:
        return operand.text;
    case Operand::Kind::Variable:
        if (const QString *value = frame.variables.find(operand.text))
            return *value;
        throw Failure{MistakeWords::tr("%1 was never set").arg(operand.text), 0, operand.at};
    case Operand::Kind::Reference: {
        QString text = m_use.reader.ExpandVar(operand.text, UnknownVariable::IsEmpty);
        requireAllowed(operand.at);
        return text;
    }
    case Operand::Kind::Template: {
        QString text;
        for (const Operand &piece : operand.pieces)
            text += textOf(frame, piece);
        return text;
    }
    }
    Q_UNREACHABLE();
}

// A call that was refused on the way fails the line, whatever it has come to.
void Runner::requireAllowed(Position at) const
{
    if (!m_use.state.refused.isEmpty())
        throw Failure{std::exchange(m_use.state.refused, {}), 0, at};
}

QString Runner::valueOf(const Run &run, const Operand &operand) const
{
    QString text = textOf(run.frame(), operand);
    if (operand.field && text.isEmpty() && !takesEmptyText(*operand.field)) {
        if (operand.field->isRequired())
            throw Failure{MistakeWords::tr("%1 is empty").arg(operand.field->name), 0, operand.at};
    } else if (operand.field) {
        if (const QString problem = problemWith(*operand.field, text); !problem.isEmpty())
            throw Failure{problem, 0, operand.at};
    }
    if (m_use.state.observer)
        m_use.state.observer->fieldRead(m_telling.nextField(), text);
    return text;
}

// False when the run is over or waits.
bool Runner::step(const std::shared_ptr<Run> &run)
{
    return carryOut(run, run->takeNext());
}

bool Runner::carryOut(const std::shared_ptr<Run> &shared, const Instruction &instruction)
{
    Run &run = *shared;
    RunPosition::Frame &frame = run.frame();
    try {
        switch (instruction.step) {
        case Step::Set:
            setVariable(frame, instruction.name, valueOf(run, instruction.single[0]));
            return true;
        case Step::Command:
            return callHandler(shared, instruction);
        case Step::Jump:
            frame.loops.resize(std::size_t(instruction.loops));
            frame.tries.resize(std::size_t(instruction.tries));
            frame.next = instruction.target;
            return true;
        case Step::JumpUnless:
            if (!isHolding(run, instruction))
                frame.next = instruction.target;
            return true;
        case Step::BeginTimes:
        case Step::BeginEach:
        case Step::BeginLines:
            beginLoop(run, instruction);
            return true;
        case Step::NextPass:
            nextPass(run, instruction);
            return true;
        case Step::BeginTry:
            frame.tries.push_back({instruction.target, instruction.loops, instruction.name});
            return true;
        case Step::EndTry:
            frame.tries.pop_back();
            return true;
        case Step::RunPart:
            runPart(run, instruction);
            return true;
        case Step::Return:
            returnFromPart(run, instruction);
            return true;
        case Step::SetPace:
            run.position.pause = valueOf(run, instruction.single[0]).toDouble();
            return true;
        case Step::End:
            finish(run);
            return false;
        }
    } catch (Failure &failure) {
        failure.file = instruction.file;
        throw;
    } catch (const RunTimeError &error) {
        throw Failure{error.description(), instruction.file, instruction.at};
    }
    Q_UNREACHABLE();
}

bool Runner::isHolding(const Run &run, const Instruction &instruction) const
{
    const QString value = valueOf(run, instruction.single[0]);
    const QString other = valueOf(run, instruction.single[1]);
    const std::optional<bool> held = holds(value, instruction.comparison, other);
    if (!held) {
        const bool isFirst = !isNumber(value);
        throw Failure{MistakeWords::tr("above and below compare numbers, and \"%1\" is none")
                          .arg(isFirst ? value : other),
            instruction.file, instruction.single[isFirst ? 0 : 1].at};
    }
    return *held;
}

bool Runner::callHandler(const std::shared_ptr<Run> &run, const Instruction &instruction)
{
    m_use.state.currentLine = instruction.at.line - 1;
    if (instruction.touchesDesktop && run->position.pause > 0)
        m_use.waiter.Wait(run->position.pause);
    if (m_use.stop)
        m_use.stop->check();
    enterContext(*run);

    FieldValues values;
    values.single.reserve(qsizetype(instruction.single.size()));
    for (const Operand &operand : instruction.single)
        values.single += valueOf(*run, operand);
    for (const Operand &operand : instruction.repeated)
        values.repeated += valueOf(*run, operand);

    const CommandCall call(instruction.name, values, run->frame().variables, m_use.state.observer);
    const Next next = instruction.handler->call(call);
    requireAllowed(instruction.at);
    if (call.hasFailed())
        throw Failure{call.failure(), instruction.file, instruction.at};
    if (next == Next::GoOn)
        return true;
    run->waitsAs = next;
    m_waiting = run;
    return false;
}

void Runner::beginLoop(Run &run, const Instruction &instruction)
{
    RunPosition::Loop loop{.items = {}, .variable = instruction.name};
    const QString value = valueOf(run, instruction.single[0]);
    if (instruction.step == Step::BeginTimes) {
        bool isWhole = false;
        loop.count = value.toLongLong(&isWhole);
        loop.counts = true;
        if (!isWhole)
            throw Failure{
                MistakeWords::tr("count is a whole number, not %1").arg(value), 0, instruction.single[0].at};
    } else if (instruction.step == Step::BeginEach) {
        const Operand &separator = instruction.single[1];
        loop.items
            = piecesOf(value, separator.kind == Operand::Kind::Nothing ? u","_s : valueOf(run, separator));
        loop.count = loop.items.size();
    } else {
        loop.items = linesOf(value);
        loop.count = loop.items.size();
    }
    run.frame().loops.push_back(std::move(loop));
}

void Runner::nextPass(Run &run, const Instruction &instruction)
{
    RunPosition::Frame &frame = run.frame();
    RunPosition::Loop &loop = frame.loops.back();
    if (loop.done >= loop.count) {
        frame.loops.pop_back();
        frame.next = instruction.target;
        return;
    }
    ++loop.done;
    if (!loop.variable.isEmpty())
        setVariable(
            frame, loop.variable, loop.counts ? QString::number(loop.done) : loop.items[loop.done - 1]);
}

void Runner::runPart(Run &run, const Instruction &instruction)
{
    if (run.position.frames.size() > deepestCall)
        throw Failure{
            MistakeWords::tr("parts run each other more than %1 deep").arg(deepestCall), 0, instruction.at};
    const Part &part = run.program->parts[std::size_t(instruction.target)];
    RunPosition::Frame inner{.next = part.entry, .result = instruction.name};
    for (std::size_t index = 0; index < instruction.repeated.size(); ++index)
        inner.variables.SetVar(part.arguments[qsizetype(index)], valueOf(run, instruction.repeated[index]));
    run.position.frames.push_back(std::move(inner));
}

void Runner::returnFromPart(Run &run, const Instruction &instruction)
{
    const QString value = valueOf(run, instruction.single[0]);
    const QString result = run.frame().result;
    run.position.frames.pop_back();
    if (!result.isEmpty())
        setVariable(run.frame(), result, value);
}

void Runner::finish(const Run &run)
{
    if (run.script.endsProcess)
        m_use.launcher.endProcess();
}

} // namespace plum::edition2
