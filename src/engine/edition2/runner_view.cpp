#include "engine/edition2/runner_view.h"

#include "engine/edition2/code_writer.h"
#include "engine/editions/mistake_words.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"

namespace plum::edition2 {

using namespace Qt::StringLiterals;

RunPosition::Frame &Runner::View::frameAt(int frame) const
{
    auto &frames = m_run.position.frames;
    return frames[frames.size() - 1 - std::size_t(frame)];
}

// A frame around others has gone past the line that runs the part.
std::size_t Runner::View::indexAt(int frame) const
{
    return frame == 0 ? m_index : std::size_t(frameAt(frame).next) - 1;
}

RunPlace Runner::View::place(int frame) const
{
    const Instruction &instruction = at(frame);
    return {instruction.file == 0 ? QString() : m_run.program->files[instruction.file], instruction.at.line};
}

QString Runner::View::name(int frame) const
{
    // Parts follow the script, each from its entry to the next one's.
    const Part *found = nullptr;
    const auto index = int(indexAt(frame));
    for (const Part &part : m_run.program->parts) {
        if (part.entry <= index && (!found || part.entry > found->entry))
            found = &part;
    }
    return found ? found->name : m_run.script.app();
}

QString Runner::View::text(int frame) const
{
    const Instruction &instruction = at(frame);
    return m_runner.m_telling.text(m_run.program->files[instruction.file], instruction.at.line);
}

Evaluation Runner::View::evaluate(int frame, const QString &expression)
{
    // Whatever can be assigned is an expression.
    QList<Mistake> mistakes;
    const Line line = readLine(u"set.it "_s + expression, 1, mistakes);
    if (!mistakes.isEmpty())
        return {.problem = mistakes.front().reason};
    if (line.values.size() != 1 || line.values.front().form == Form::LeftOut)
        return {.problem = MistakeWords::tr("this is not one value")};
    const Value &value = line.values.front();
    if (value.form == Form::Word)
        return {.problem = MistakeWords::tr("%1 was never set").arg(value.text)};
    m_runner.enterContext(m_run);
    const Aside aside(m_runner.m_use.state, m_run.script.limit);
    try {
        return {m_runner.textOf(frameAt(frame), CodeWriter::operandOf(value))};
    } catch (const Failure &failure) {
        return {.problem = failure.reason};
    } catch (const RunTimeError &error) {
        return {.problem = error.description()};
    }
}

} // namespace plum::edition2
