#include "sheet/edition1_walk.h"

#include "check/edition1/command_traits.h"
#include "check/edition1/references.h"
#include "check/edition1/script_line.h"
#include "engine/text_functions.h"
#include "sheet/effect_collector.h"
#include "sheet/objects.h"

#include <QHash>

#include <algorithm>

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView loopNamespace = u"while";
constexpr int mostRounds = 8; // through variables that are set from each other

// A line that may be carried out. The same line stands here twice where it takes its command or its arguments
// from the line before: a repetition may begin between the two.
struct Call
{
    qsizetype line = 0;
    QString nameSpace;
    const CommandInfo *info = nullptr;
    CommandTraits traits;
    Arguments arguments;
    QString command;
    QList<Value> values; // at the commas, or the one value that there is
};

// No script has these characters; one that has is up to something.
QString withoutMarks(QString text)
{
    const auto isMark = [](QChar c) { return c == appFolderText || c == desktopText; };
    std::ranges::replace_if(text, isMark, anyText);
    return text.replace(commaPlaceholder, u","_s);
}

class Walk
{
public:
    Walk(const QStringList &lines, const ScriptVocabulary &vocabulary)
        : m_vocabulary(vocabulary)
    {
        for (auto table = vocabulary.tables().begin(); table != vocabulary.tables().end(); ++table) {
            for (const CommandInfo &info : *table) {
                if (info.existsIn(Edition::One))
                    m_rows[table.key()] += info;
            }
        }
        readLines(lines);
    }

    Sheet sheet()
    {
        for (int round = 0; followVariables(); ++round) {
            if (round == mostRounds)
                forgetVariables();
        }
        for (const Call &call : m_calls) {
            m_effects.take(*call.info, [&](int field) { return fieldOf(call, field); });
            takeReferences(call.arguments);
        }
        m_effects.finish();
        return m_effects.sheet();
    }

private:
    void readLines(const QStringList &lines);
    void addCall(
        qsizetype line, const QString &nameSpace, const QString &command, const Arguments &arguments);
    const CommandInfo *rowOf(const QString &nameSpace, const QString &command) const;
    bool followVariables();
    void forgetVariables();
    bool assign(const Call &call, const PossibleText &name, const PossibleText &value);
    PossibleText fieldOf(const Call &call, int field) const;
    PossibleText possible(const Value &value, qsizetype line) const;
    PossibleText possibleTemplate(const Value &value, qsizetype line) const;
    PossibleText variable(const QString &name, qsizetype line) const;
    void takeReferences(const Arguments &arguments);
    void takeReference(const Value &value);

    struct Variable
    {
        PossibleText value;
        qsizetype firstLine = 0;
    };

    const ScriptVocabulary &m_vocabulary;
    QHash<QString, QList<CommandInfo>> m_rows;
    std::vector<Call> m_calls;
    QHash<QString, Variable> m_variables;
    PossibleText m_somewhere; // is in a variable whose name is not known
    EffectCollector m_effects;
};

void Walk::readLines(const QStringList &lines)
{
    QString command;
    Arguments arguments;
    for (qsizetype index = 0; index < lines.size(); ++index) {
        const auto line = ScriptLine::read(lines[index], static_cast<int>(index + 1));
        if (!line)
            continue;
        if (line->hasDot)
            command = line->command;
        if (line->arguments)
            arguments = *line->arguments;
        const QString &nameSpace = line->nameSpace;
        if (nameSpace == loopNamespace) {
            takeReferences(arguments);
            continue;
        }
        addCall(index, nameSpace, command, arguments);
        if (!line->arguments && !arguments.text.isEmpty())
            addCall(index, nameSpace, command, {});
        if (!line->hasDot && !command.isEmpty()) {
            addCall(index, nameSpace, {}, arguments);
            addCall(index, nameSpace, {}, {});
        }
    }
}

const CommandInfo *Walk::rowOf(const QString &nameSpace, const QString &command) const
{
    const auto table = m_rows.constFind(nameSpace);
    if (table == m_rows.constEnd())
        return nullptr;
    const QString lowered = command.toLower();
    // A word that ends in "_", and "enter", stand for all that begin so.
    const auto isMeant = [&](const CommandInfo &info) {
        return info.word.isEmpty() || info.word == command || info.word == lowered
            || (command.startsWith(info.word) && (info.word.endsWith(u'_') || info.word == u"enter"));
    };
    const auto row = std::ranges::find_if(*table, isMeant);
    return row == table->constEnd() ? nullptr : &*row;
}

void Walk::addCall(
    qsizetype line, const QString &nameSpace, const QString &command, const Arguments &arguments)
{
    const CommandInfo *info = rowOf(nameSpace, command);
    if (!info)
        return;
    Call call{line, nameSpace, info, traitsOf(nameSpace, command.toLower()), arguments, command, {}};
    switch (call.traits.reading) {
    case Reading::Commas:
        call.values = arguments.values(u',');
        break;
    case Reading::Colon:
        call.values = {arguments.values(u':').front()};
        break;
    case Reading::Whole:
        call.values = {arguments.whole()};
        break;
    case Reading::Raw:
        call.values = {{.kind = Value::Kind::Literal, .written = arguments.text, .text = arguments.text}};
        break;
    }
    m_calls.push_back(std::move(call));
}

// Whether something new was learned.
bool Walk::followVariables()
{
    bool isNew = false;
    for (const Call &call : m_calls) {
        if (call.nameSpace == "set"_L1) {
            isNew = assign(call, PossibleText::known(call.command), fieldOf(call, 0)) || isNew;
            continue;
        }
        // What a command writes into a file it reads from its variable.
        const auto has = [&call](Effect effect) {
            return std::ranges::any_of(
                call.info->effects, [effect](const CommandEffect &each) { return each.effect == effect; });
        };
        if (has(Effect::WriteFile))
            continue;
        const PossibleText result = resultOf(*call.info, [&](int field) { return fieldOf(call, field); });
        const auto fields = call.info->usedFields();
        for (std::size_t index = 0; index < fields.size(); ++index) {
            const bool isVariable = fields[index].kind == FieldKind::Variable || fields[index].takesVariable;
            if (isVariable)
                isNew = assign(call, fieldOf(call, static_cast<int>(index)), result) || isNew;
        }
        // The words of window.get have fields of their own, which stand elsewhere.
        if (call.nameSpace == "window"_L1) {
            for (const Value &value : call.values)
                isNew = assign(call, possible(value, call.line), result) || isNew;
        }
    }
    return isNew;
}

// Variables that go on changing are as good as unknown.
void Walk::forgetVariables()
{
    for (Variable &variable : m_variables)
        variable.value.join(PossibleText::unknown());
    m_somewhere.join(PossibleText::unknown());
}

bool Walk::assign(const Call &call, const PossibleText &name, const PossibleText &value)
{
    if (name.isGiven() || name.isUnknown())
        return m_somewhere.join(value);
    bool isNew = false;
    for (const QString &each : name.texts()) {
        if (!m_variables.contains(each)) {
            m_variables.insert(each, {{}, call.line});
            isNew = true;
        }
        isNew = m_variables[each].value.join(value) || isNew;
    }
    return isNew;
}

PossibleText Walk::variable(const QString &name, qsizetype line) const
{
    PossibleText value = m_somewhere;
    const auto known = m_variables.constFind(name);
    if (known != m_variables.constEnd())
        value.join(known->value);
    // What was never set stands for its name.
    if (known == m_variables.constEnd() || known->firstLine >= line)
        value.join(PossibleText::known(withoutMarks(name)));
    return value;
}

PossibleText Walk::fieldOf(const Call &call, int field) const
{
    if (call.values.isEmpty() || field < 0)
        return {};
    if (field < call.values.size())
        return possible(call.values[field], call.line);
    const bool answersForAll = call.values.size() == 1 && call.traits.single == SingleArgument::AnswersForAll;
    return answersForAll ? possible(call.values.front(), call.line) : PossibleText::known({});
}

PossibleText Walk::possible(const Value &value, qsizetype line) const
{
    switch (value.kind) {
    case Value::Kind::Literal:
        return PossibleText::known(withoutMarks(value.text));
    case Value::Kind::Empty:
    case Value::Kind::Nothing:
        return PossibleText::known({});
    case Value::Kind::Template:
        return possibleTemplate(value, line);
    case Value::Kind::Reference:
        if (value.prefix == "set"_L1)
            return variable(value.name, line);
        return isReference(value) || value.name.startsWith("enter_input"_L1)
            ? valueOfReference(QString(value.prefix + u'.' + value.name))
            : PossibleText::known({});
    case Value::Kind::Broken:
        break;
    }
    return PossibleText::unknown();
}

// The texts between the slots, with the values in them. A slot that shares its "+" with the list is left to
// chance, and so are values that look like slots or lists themselves.
PossibleText Walk::possibleTemplate(const Value &value, qsizetype line) const
{
    const QString fixed = withoutMarks(value.written.first(value.written.indexOf("+("_L1)));
    if (fixed.endsWith("+?"_L1))
        return PossibleText::unknown();
    const QStringList texts = fixed.split(u"+?+"_s);
    PossibleText filled = PossibleText::known(texts.front());
    for (qsizetype slot = 0; slot + 1 < texts.size(); ++slot) {
        PossibleText inner = PossibleText::known(u"+?+"_s);
        if (value.names.size() == 1)
            inner = possible(value.names.front(), line);
        else if (slot < value.names.size())
            inner = possible(value.names[slot], line);
        const bool looksLikeSlot
            = std::ranges::any_of(inner.texts(), [](const QString &text) { return text.contains(u'+'); });
        filled = filled.followedBy(looksLikeSlot ? PossibleText::unknown() : inner);
        filled = filled.followedBy(PossibleText::known(texts[slot + 1]));
    }
    return filled;
}

// However the command takes its arguments apart.
void Walk::takeReferences(const Arguments &arguments)
{
    if (!EffectCollector::mayLearn(arguments.text))
        return;
    takeReference(arguments.whole());
    for (const QChar separator : {u',', u':'}) {
        for (const Value &value : arguments.values(separator)) {
            takeReference(value);
            if (separator == u',') {
                for (const Value &piece : Arguments{value.written, value.column}.values(u':'))
                    takeReference(piece);
            }
        }
    }
}

void Walk::takeReference(const Value &value)
{
    if (value.kind == Value::Kind::Reference)
        m_effects.takeReference(QString(value.prefix + u'.' + value.name));
    for (const Value &name : value.names)
        takeReference(name);
}

} // namespace

Sheet effectsOf(const QStringList &lines, const ScriptVocabulary &vocabulary)
{
    return Walk(lines, vocabulary).sheet();
}

} // namespace plum::edition1
