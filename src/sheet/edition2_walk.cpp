#include "sheet/edition2_walk.h"

#include "engine/editions/reason.h"
#include "sheet/effect_collector.h"
#include "sheet/objects.h"

#include <QHash>

#include <algorithm>
#include <memory>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRounds = 8; // through variables that are set from each other

// Stands in a linked script for the handler of a namespace: it says which one is meant, and runs nothing.
class NamespaceMark final : public Handler
{
public:
    NamespaceMark(QString name, QList<CommandInfo> commands)
        : m_name(std::move(name))
        , m_commands(std::move(commands))
    {
    }

    Next call(const CommandCall &) override { return Next::GoOn; }
    QList<CommandInfo> commands() const override { return m_commands; }
    const QString &name() const { return m_name; }

private:
    QString m_name;
    QList<CommandInfo> m_commands;
};

class NamespaceMarks
{
public:
    explicit NamespaceMarks(const ScriptVocabulary &vocabulary)
        : m_vocabulary(vocabulary)
    {
    }

    Handler *of(const QString &nameSpace)
    {
        std::unique_ptr<NamespaceMark> &mark = m_marks[nameSpace];
        if (!mark)
            mark = std::make_unique<NamespaceMark>(nameSpace, m_vocabulary.tables().value(nameSpace));
        return mark.get();
    }

    const CommandInfo *rowOf(const Instruction &instruction) const
    {
        const auto *mark = static_cast<const NamespaceMark *>(instruction.handler);
        return mark ? m_vocabulary.find(mark->name(), instruction.name) : nullptr;
    }

private:
    const ScriptVocabulary &m_vocabulary;
    std::map<QString, std::unique_ptr<NamespaceMark>> m_marks;
};

bool has(const CommandInfo &info, Effect effect)
{
    return std::ranges::any_of(
        info.effects, [effect](const CommandEffect &each) { return each.effect == effect; });
}

class Walk
{
public:
    Walk(const Program &program, const NamespaceMarks &marks)
        : m_program(program)
        , m_marks(marks)
    {
    }

    Sheet sheet();

private:
    // The script's own lines are one scope, each part is another.
    int scopeOf(std::size_t instruction) const;
    bool followVariables();
    bool follow(std::size_t index);
    bool assign(int scope, const PossibleText &name, const PossibleText &value);
    PossibleText valueOf(const Operand &operand, int scope) const;
    void takeReferences(const Operand &operand);
    PossibleText fieldOf(const Instruction &instruction, int field, int scope) const;
    QString onlyWindow() const;
    const QString *titleOf(const Operand &handle, int scope) const;

    const Program &m_program;
    const NamespaceMarks &m_marks;
    QHash<std::pair<int, QString>, PossibleText> m_variables;
    QHash<int, PossibleText> m_somewhere; // by scope: in a variable whose name is not known
    QHash<int, PossibleText> m_returned; // by part
    QHash<std::pair<int, QString>, PossibleText> m_windows; // titles of the windows whose handles these hold
    EffectCollector m_effects;
};

int Walk::scopeOf(std::size_t instruction) const
{
    int scope = -1;
    for (std::size_t part = 0; part < m_program.parts.size(); ++part) {
        if (m_program.parts[part].entry <= static_cast<int>(instruction))
            scope = static_cast<int>(part);
    }
    return scope;
}

bool Walk::assign(int scope, const PossibleText &name, const PossibleText &value)
{
    if (name.isGiven() || name.isUnknown())
        return m_somewhere[scope].join(value);
    bool isNew = false;
    for (const QString &each : name.texts()) {
        if (!each.isEmpty())
            isNew = m_variables[{scope, each}].join(value) || isNew;
    }
    return isNew;
}

PossibleText Walk::valueOf(const Operand &operand, int scope) const
{
    switch (operand.kind) {
    case Operand::Kind::Nothing:
        return PossibleText::known({});
    case Operand::Kind::Constant: {
        QString text = operand.text;
        std::ranges::replace_if(
            text, [](QChar c) { return c == appFolderText || c == desktopText; }, anyText);
        return PossibleText::known(text);
    }
    case Operand::Kind::Variable: {
        PossibleText value = m_somewhere.value(scope);
        value.join(m_variables.value({scope, operand.text}));
        // Nothing sets it: a line that reads it fails, unless it is there from the beginning.
        return value.isNone() ? PossibleText::unknown() : value;
    }
    case Operand::Kind::Reference:
        return valueOfReference(operand.text);
    case Operand::Kind::Template: {
        PossibleText text = PossibleText::known({});
        for (const Operand &piece : operand.pieces)
            text = text.followedBy(valueOf(piece, scope));
        return text;
    }
    }
    Q_UNREACHABLE();
}

// Whether something new was learned.
bool Walk::followVariables()
{
    bool isNew = false;
    for (std::size_t index = 0; index < m_program.instructions.size(); ++index)
        isNew = follow(index) || isNew;
    return isNew;
}

bool Walk::follow(std::size_t index)
{
    const Instruction &instruction = m_program.instructions[index];
    const int scope = scopeOf(index);
    const auto named = [&](const PossibleText &value) {
        return assign(scope, PossibleText::known(instruction.name), value);
    };
    switch (instruction.step) {
    case Step::Set:
        return named(valueOf(instruction.single.front(), scope));
    case Step::BeginTimes:
    case Step::BeginEach:
    case Step::BeginLines:
    case Step::BeginTry:
        return named(PossibleText::unknown());
    case Step::RunPart: {
        const Part &part = m_program.parts[static_cast<std::size_t>(instruction.target)];
        bool isNew = named(m_returned.value(instruction.target));
        for (std::size_t i = 0; i < instruction.repeated.size(); ++i) {
            const auto argument = PossibleText::known(part.arguments[static_cast<qsizetype>(i)]);
            isNew = assign(instruction.target, argument, valueOf(instruction.repeated[i], scope)) || isNew;
        }
        return isNew;
    }
    case Step::Return:
        return m_returned[scope].join(valueOf(instruction.single.front(), scope));
    case Step::Command:
        break;
    default:
        return false;
    }

    const CommandInfo *info = m_marks.rowOf(instruction);
    if (!info || has(*info, Effect::WriteFile))
        return false; // what is written into a file is read from its variable
    const PossibleText result
        = resultOf(*info, [&](int field) { return fieldOf(instruction, field, scope); });
    bool isNew = false;
    // Whatever a constant names may be the variable that receives the result; for a choice that brings fields
    // of its own it is one of those.
    const auto fields = info->usedFields();
    const bool hasChoice = std::ranges::any_of(fields, [](const Field &field) {
        return std::ranges::any_of(
            field.choices(), [](const CommandInfo &choice) { return !choice.usedFields().empty(); });
    });
    std::size_t at = 0;
    for (const Operand &operand : instruction.single) {
        const Field *field = at < fields.size() ? &fields[at] : nullptr;
        ++at;
        if (hasChoice || !field || field->kind == FieldKind::Variable || field->takesVariable)
            isNew = assign(scope, valueOf(operand, scope), result) || isNew;
    }
    for (const Operand &operand : instruction.repeated) {
        if (std::ranges::any_of(fields,
                [](const Field &field) { return field.mayRepeat && field.kind == FieldKind::Variable; }))
            isNew = assign(scope, valueOf(operand, scope), result) || isNew;
    }
    // The handle of a window that was waited for by its title.
    if (has(*info, Effect::SeeWindows) && info->usedFields().front().name == u"title"
        && instruction.single.size() > 2 && instruction.single[2].kind == Operand::Kind::Constant) {
        isNew = m_windows[{scope, instruction.single[2].text}].join(valueOf(instruction.single[0], scope))
            || isNew;
    }
    return isNew;
}

void Walk::takeReferences(const Operand &operand)
{
    if (operand.kind == Operand::Kind::Reference)
        m_effects.takeReference(operand.text);
    for (const Operand &piece : operand.pieces)
        takeReferences(piece);
}

PossibleText Walk::fieldOf(const Instruction &instruction, int field, int scope) const
{
    return field >= 0 && static_cast<std::size_t>(field) < instruction.single.size()
        ? valueOf(instruction.single[static_cast<std::size_t>(field)], scope)
        : PossibleText::known({});
}

// The title of the window whose handle stands there for certain.
const QString *Walk::titleOf(const Operand &handle, int scope) const
{
    if (handle.kind != Operand::Kind::Variable)
        return nullptr;
    const auto known = m_windows.constFind({scope, handle.text});
    if (known == m_windows.constEnd())
        return nullptr;
    // Set by nothing else: then it would be more than the one unknown handle.
    const auto isSetElsewhere = std::ranges::any_of(m_program.instructions, [&](const Instruction &each) {
        const bool isSet = each.step == Step::Set && each.name == handle.text;
        const bool isStored
            = each.step == Step::Command && std::ranges::any_of(each.single, [&](const Operand &operand) {
                  return operand.kind == Operand::Kind::Constant && operand.text == handle.text;
              });
        const CommandInfo *info = each.step == Step::Command ? m_marks.rowOf(each) : nullptr;
        const bool isWait
            = info && has(*info, Effect::SeeWindows) && info->usedFields().front().name == u"title";
        return isSet || (isStored && !isWait);
    });
    return isSetElsewhere ? nullptr : known->certain();
}

// The one window that was brought to the front before every key and click, and none but it.
QString Walk::onlyWindow() const
{
    QString title;
    int activated = -1;
    for (std::size_t index = 0; index < m_program.instructions.size(); ++index) {
        const Instruction &each = m_program.instructions[index];
        if (each.step == Step::RunPart && activated < 0)
            return {};
        if (each.step != Step::Command)
            continue;
        const CommandInfo *info = m_marks.rowOf(each);
        if (!info)
            continue;
        const bool changes = has(*info, Effect::ChangeWindows) && each.single.size() > 1;
        if (changes && each.single[0].text == "active_window"_L1) {
            const QString *one = titleOf(each.single[1], scopeOf(index));
            if (!one || (!title.isEmpty() && *one != title) || scopeOf(index) >= 0)
                return {};
            title = *one;
            activated = activated < 0 ? static_cast<int>(index) : activated;
        }
        const bool isInput
            = has(*info, Effect::Keys) || has(*info, Effect::Paste) || has(*info, Effect::Mouse);
        if (isInput && activated < 0)
            return {};
    }
    // Nothing above may lead past it.
    for (int index = 0; index < activated; ++index) {
        const Instruction &each = m_program.instructions[static_cast<std::size_t>(index)];
        const bool jumps = each.step == Step::Jump || each.step == Step::JumpUnless
            || each.step == Step::NextPass || each.step == Step::BeginTry;
        if (jumps && each.target > activated)
            return {};
    }
    return activated < 0 ? QString() : title;
}

Sheet Walk::sheet()
{
    for (int round = 0; followVariables(); ++round) {
        if (round < mostRounds)
            continue;
        for (PossibleText &value : m_variables)
            value.join(PossibleText::unknown());
        for (PossibleText &value : m_returned)
            value.join(PossibleText::unknown());
    }
    for (std::size_t index = 0; index < m_program.instructions.size(); ++index) {
        const Instruction &each = m_program.instructions[index];
        for (const Operand &operand : each.single)
            takeReferences(operand);
        for (const Operand &operand : each.repeated)
            takeReferences(operand);
        if (each.step != Step::Command)
            continue;
        const int scope = scopeOf(index);
        if (const CommandInfo *info = m_marks.rowOf(each)) {
            m_effects.take(*info, [&](int field) { return fieldOf(each, field, scope); });
        } else {
            m_effects.sheet().addEverything();
        }
    }
    m_effects.finish();
    if (const QString title = onlyWindow(); !title.isEmpty())
        m_effects.sheet().setWindow(title);
    return m_effects.sheet();
}

} // namespace

Sheet effectsOf(const QString &text, const ScriptVocabulary &vocabulary,
    const std::function<std::optional<QString>(const QString &file)> &load, QString &problem)
{
    NamespaceMarks marks(vocabulary);
    const Linked linked
        = link(QString(), text, {vocabulary, [&marks](const QString &name) { return marks.of(name); }, load});
    if (!linked.program) {
        const ScriptMistake &first = linked.mistakes.front();
        problem = Reason::tr("line %1: %2").arg(first.line).arg(first.reason);
        return {};
    }
    return Walk(*linked.program, marks).sheet();
}

} // namespace plum::edition2
