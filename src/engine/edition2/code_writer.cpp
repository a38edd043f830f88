#include "engine/edition2/code_writer.h"

#include "engine/edition2/comparisons.h"
#include "engine/editions/mistake_words.h"

#include <algorithm>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

Operand reference(const QString &name)
{
    if (!name.contains(u'.'))
        return {.kind = Operand::Kind::Variable, .text = name};
    if (name.startsWith("set."_L1))
        return {.kind = Operand::Kind::Variable, .text = name.sliced(4)};
    return {.kind = Operand::Kind::Reference, .text = name};
}

// The variable that a line names in one of its fields; empty when it is left out.
QString nameIn(const BoundLine &bound, std::size_t index)
{
    return index < bound.single.size() && bound.single[index].value ? bound.single[index].value->text
                                                                    : QString();
}

} // namespace

CodeWriter::CodeWriter(Program &program, const LinkNeeds &needs, Fail fail)
    : m_program(program)
    , m_use(needs)
    , m_fail(std::move(fail))
{
}

void CodeWriter::writeScript(const Tree &tree)
{
    write(tree.statements);
    m_program.instructions.push_back({.step = Step::End, .isImplied = true});
}

void CodeWriter::writePart(const Section &section, Part &part)
{
    m_file = part.file;
    part.entry = here();
    write(section.body);
    Instruction &end = add(Step::Return, section.head);
    end.single.push_back({});
    end.isImplied = true;
}

Instruction &CodeWriter::add(Step step, const Line &line)
{
    m_program.instructions.push_back(
        {.step = step, .loops = m_loops, .tries = m_tries, .file = m_file, .at = line.at});
    return m_program.instructions.back();
}

int CodeWriter::addJump(int target, const Line &line)
{
    Instruction &jump = add(Step::Jump, line);
    jump.target = target;
    jump.isImplied = true;
    return here() - 1;
}

// Lets a jump lead to the instruction that comes next.
void CodeWriter::land(int jump)
{
    m_program.instructions[std::size_t(jump)].target = here();
}

Operand CodeWriter::operandOf(const Value &value)
{
    Operand operand{.kind = Operand::Kind::Constant, .text = value.text};
    if (value.form == Form::LeftOut) {
        operand.kind = Operand::Kind::Nothing;
    } else if (value.form == Form::Reference) {
        operand = reference(value.text);
    } else if (value.form == Form::Template) {
        operand.kind = Operand::Kind::Template;
        for (const Chunk &chunk : value.chunks) {
            operand.pieces.push_back(chunk.isName
                    ? reference(chunk.text)
                    : Operand{.kind = Operand::Kind::Constant, .text = chunk.text});
            operand.pieces.back().at = value.at;
        }
    }
    operand.at = value.at;
    return operand;
}

Operand CodeWriter::operandOf(const BoundValue &bound)
{
    if (!bound.value)
        return {};
    Operand operand = operandOf(*bound.value);
    const bool isAnyText = bound.field->kind == FieldKind::Text && bound.field->choices().empty();
    if (operand.kind != Operand::Kind::Constant && !isAnyText)
        operand.field = bound.field;
    return operand;
}

// The parser has judged the line already.
BoundLine CodeWriter::bind(const Line &line) const
{
    const CommandInfo *info = line.word == Word::Command ? m_use.vocabulary.find(line.nameSpace, line.command)
                                                         : &ownWord(line.word).info;
    QList<Mistake> known;
    return bindFields(line, *info, known);
}

void CodeWriter::write(const std::vector<Statement> &statements)
{
    for (const Statement &statement : statements)
        write(statement);
}

void CodeWriter::write(const Statement &statement)
{
    if (!statement.isBlock()) {
        writeLine(statement.line);
        return;
    }
    switch (statement.sections.front().head.word) {
    case Word::WhenStart:
        return writeWhen(statement);
    case Word::RepeatWhile:
        return writeWhile(statement);
    case Word::RepeatTimes:
        return writeCounted(statement, Step::BeginTimes);
    case Word::RepeatEach:
        return writeCounted(statement, Step::BeginEach);
    case Word::RepeatLines:
        return writeCounted(statement, Step::BeginLines);
    case Word::TryStart:
        return writeTry(statement);
    default:
        return; // a part is written by itself
    }
}

void CodeWriter::writeLine(const Line &line)
{
    switch (line.word) {
    case Word::Set: {
        const Operand value = operandOf(bind(line).single.front());
        Instruction &set = add(Step::Set, line);
        set.name = line.command;
        set.single.push_back(value);
        return;
    }
    case Word::Command:
        return writeCommand(line);
    case Word::PartRun:
        return writePartRun(line);
    case Word::PartReturn: {
        const Operand value = operandOf(bind(line).single.front());
        add(Step::Return, line).single.push_back(value);
        return;
    }
    case Word::PaceSet: {
        const Operand pause = operandOf(bind(line).single.front());
        add(Step::SetPace, line).single.push_back(pause);
        return;
    }
    case Word::RepeatNext: {
        const Repetition &repetition = m_repetitions.back();
        Instruction &jump = add(Step::Jump, line);
        jump.target = repetition.next;
        jump.loops = repetition.loopsInside;
        jump.tries = repetition.tries;
        return;
    }
    case Word::RepeatBreak: {
        Repetition &repetition = m_repetitions.back();
        Instruction &jump = add(Step::Jump, line);
        jump.loops = repetition.loopsOutside;
        jump.tries = repetition.tries;
        repetition.breaks.push_back(here() - 1);
        return;
    }
    default:
        return; // comments, and part.use, which has been followed
    }
}

void CodeWriter::writeCommand(const Line &line)
{
    const BoundLine bound = bind(line);
    Instruction &command = add(Step::Command, line);
    command.name = line.command;
    command.handler = m_use.handler(line.nameSpace);
    const CommandInfo &info = *m_use.vocabulary.find(line.nameSpace, line.command);
    command.touchesDesktop = info.touches == Touches::Desktop;
    command.onlyComputes = info.onlyComputes();
    for (const BoundValue &value : bound.single)
        command.single.push_back(operandOf(value));
    for (const BoundValue &value : bound.repeated)
        command.repeated.push_back(operandOf(value));
}

void CodeWriter::writePartRun(const Line &line)
{
    BoundLine bound = bind(line);
    const QString name = nameIn(bound, 0);
    QString result = nameIn(bound, 2);
    const auto part = std::ranges::find(m_program.parts, name, &Part::name);
    if (part == m_program.parts.end()) {
        m_fail(m_file, line.values.front().at, MistakeWords::tr("there is no part %1").arg(name));
        return;
    }
    const auto wanted = std::size_t(part->arguments.size());
    // A result that is named in quotes means the same.
    if (result.isEmpty() && bound.repeated.size() == wanted + 1
        && bound.repeated.back().value->form == Form::Text && isName(bound.repeated.back().value->text)) {
        result = bound.repeated.back().value->text;
        bound.repeated.pop_back();
    }
    if (bound.repeated.size() != wanted) {
        m_fail(m_file, line.at,
            (wanted == 1 ? MistakeWords::tr("part %1 takes %2 value, not %3")
                         : MistakeWords::tr("part %1 takes %2 values, not %3"))
                .arg(name)
                .arg(wanted)
                .arg(bound.repeated.size()));
        return;
    }
    Instruction &run = add(Step::RunPart, line);
    run.name = result;
    run.target = int(part - m_program.parts.begin());
    for (const BoundValue &value : bound.repeated)
        run.repeated.push_back(operandOf(value));
}

// Writes a jump that is taken when the condition of the line does not hold.
int CodeWriter::writeCondition(const Line &line)
{
    const BoundLine bound = bind(line);
    Instruction &jump = add(Step::JumpUnless, line);
    jump.single.push_back(operandOf(bound.single[0]));
    const auto word = std::ranges::find(comparisonWords(), QStringView(nameIn(bound, 1)),
        [](const ComparisonWord &row) { return row.info.word; });
    jump.comparison = word->comparison;
    jump.single.push_back(bound.single.size() > 2 ? operandOf(bound.single[2]) : Operand{});
    return here() - 1;
}

void CodeWriter::writeWhen(const Statement &block)
{
    std::vector<int> ends;
    for (const Section &section : block.sections) {
        const bool isElse = section.head.word == Word::WhenElse;
        const int skip = isElse ? -1 : writeCondition(section.head);
        write(section.body);
        ends.push_back(addJump(0, block.line));
        if (!isElse)
            land(skip);
    }
    for (const int end : ends)
        land(end);
}

void CodeWriter::writeBody(const Section &section, Repetition repetition, int exit)
{
    const int next = repetition.next;
    m_repetitions.push_back(std::move(repetition));
    write(section.body);
    addJump(next, section.head);
    land(exit);
    for (const int jump : m_repetitions.back().breaks)
        land(jump);
    m_repetitions.pop_back();
}

void CodeWriter::writeWhile(const Statement &block)
{
    const Section &section = block.sections.front();
    const int head = here();
    const int exit = writeCondition(section.head);
    writeBody(section, {head, m_loops, m_loops, m_tries}, exit);
}

void CodeWriter::writeCounted(const Statement &block, Step begin)
{
    const Section &section = block.sections.front();
    const BoundLine bound = bind(section.head);
    Instruction &start = add(begin, section.head);
    start.name = nameIn(bound, 1);
    start.single.push_back(operandOf(bound.single[0]));
    if (begin == Step::BeginEach)
        start.single.push_back(operandOf(bound.single[2]));
    ++m_loops;
    const int head = here();
    add(Step::NextPass, section.head);
    writeBody(section, {head, m_loops, m_loops - 1, m_tries}, head);
    --m_loops;
}

void CodeWriter::writeTry(const Statement &block)
{
    const Section &failed = block.sections.back();
    const int begin = here();
    Instruction &start = add(Step::BeginTry, block.sections.front().head);
    start.name = nameIn(bind(failed.head), 0);
    start.isImplied = true;
    ++m_tries;
    write(block.sections.front().body);
    add(Step::EndTry, block.line).isImplied = true;
    --m_tries;
    const int end = addJump(0, block.line);
    land(begin);
    write(failed.body);
    land(end);
}

} // namespace plum::edition2
