#include "check/edition1/argument_rules.h"

#include "check/findings/check_words.h"
#include "check/findings/literal_rules.h"

#include <algorithm>

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

bool standsForSomething(const Value &value)
{
    return value.kind != Value::Kind::Nothing && !(value.isLiteral() && value.text.isEmpty());
}

} // namespace

void ArgumentRules::judge(const ScriptLine &line, const CommandInfo &info, const CommandTraits &traits)
{
    CalledCommand command{line, info, traits, {}};
    for (const Field &field : info.usedFields())
        command.fields += field;
    if (!line.arguments) {
        if (!command.fields.isEmpty())
            m_report.add(line.number, 1, u"inherited-arguments",
                CheckWords::tr("Without arguments of its own, %1 takes those of the line before.")
                    .arg(line.head()));
        return;
    }
    if (command.fields.isEmpty()) {
        if (!line.arguments->text.trimmed().isEmpty() && !traits.ignoresArguments)
            m_report.add(line.number, line.arguments->column, u"surplus-arguments",
                CheckWords::tr("%1 takes no arguments.").arg(line.head()));
        return;
    }
    if (traits.reading == Reading::Raw) {
        judgeRaw(line);
        return;
    }

    const QList<Value> values = valuesOf(command);
    if (command.fields.front().kind == FieldKind::KeyList) {
        judgeKeys(m_report, line, values);
        return;
    }
    takeFieldsOfChoice(command, values);
    if (std::ranges::any_of(values, [](const Value &value) { return value.kind == Value::Kind::Broken; })) {
        // With a quote in the wrong place nobody knows which value was meant for which field; only the
        // variables that it names are taken, so that nothing more is said of them further down.
        takeVariables(command, values);
        return;
    }
    judgeCount(command, values);
    m_fields.setRegion({});
    for (qsizetype i = 0; i < std::min(values.size(), command.fields.size()); ++i) {
        if (command.fields[i].kind == FieldKind::Region)
            m_fields.setRegion(m_fields.knownText(values[i], line.number));
    }
    if (values.size() == 1) {
        m_fields.judge(command, command.fields.front(), values.front());
        // One value for all is said once, and what it is not is said of the first field that it does not fit.
        if (traits.single == SingleArgument::AnswersForAll && values.front().isLiteral()) {
            for (const Field &field : command.fields.sliced(1)) {
                if (field.kind == FieldKind::Variable)
                    m_fields.judge(command, field, values.front());
            }
        }
        return;
    }
    for (qsizetype i = 0; i < std::min(values.size(), command.fields.size()); ++i)
        m_fields.judge(command, command.fields[i], values[i]);
}

void ArgumentRules::takeVariables(const CalledCommand &command, const QList<Value> &values)
{
    for (qsizetype i = 0; i < std::min(values.size(), command.fields.size()); ++i) {
        const Field &field = command.fields[i];
        if (field.kind == FieldKind::Variable && values[i].isLiteral() && !values[i].text.isEmpty())
            m_fields.judge(command, field, values[i]);
    }
}

void ArgumentRules::judgeAssignment(const ScriptLine &line)
{
    if (line.command.isEmpty())
        m_report.add(line.number, line.commandColumn, u"empty-value",
            CheckWords::tr("The name of a variable is missing behind the dot."));
    if (!line.arguments) {
        m_report.add(line.number, 1, u"inherited-arguments",
            CheckWords::tr("Without a value of its own, %1 takes the arguments of the line before.")
                .arg(line.head()));
        m_variables.set(line.command, line.number, line.commandColumn);
        return;
    }
    const Value value = m_writing.judge(line.number, {line.arguments->whole()}).front();
    if (value.kind == Value::Kind::Nothing && !value.written.contains(u'"'))
        m_report.add(line.number, value.column, u"unquoted-value",
            CheckWords::tr("%1 without quotes is nothing: \"%2\" becomes the empty text.")
                .arg(value.written, line.command));
    else if (value.kind == Value::Kind::Empty)
        m_report.add(line.number, value.column, u"empty-value",
            CheckWords::tr("Nothing stands here; write \"\" for an empty text."));
    m_variables.set(line.command, line.number, line.commandColumn, m_fields.knownText(value, line.number));
    if (value.isQuoted)
        judgeSecret(m_report, line.number, value.column, line.command, value.text);
    if (value.isLiteral())
        judgePlace(m_report, line.number, value.column, value.text);
}

void ArgumentRules::judgeRaw(const ScriptLine &line)
{
    const Arguments &arguments = *line.arguments;
    if (arguments.text.trimmed().isEmpty())
        m_report.add(line.number, arguments.column, u"empty-value",
            CheckWords::tr("%1 needs a text.").arg(line.head()));
    else if (arguments.text.startsWith(u' ') || arguments.text.endsWith(u' '))
        m_report.add(line.number, arguments.column, u"blank-around-value",
            CheckWords::tr("The blank beside %1 belongs to the text.").arg(arguments.text.trimmed()));
    else if (arguments.text.startsWith(u'"') && arguments.text.endsWith(u'"'))
        m_report.add(line.number, arguments.column, u"odd-value",
            CheckWords::tr("%1 takes the text as it stands, with its quotes.").arg(line.head()));
}

QList<Value> ArgumentRules::valuesOf(const CalledCommand &command)
{
    const ScriptLine &line = command.line;
    const Arguments &arguments = *line.arguments;
    if (command.traits.reading != Reading::Colon)
        return m_writing.judge(line.number, arguments.values(u','));
    const qsizetype colon = arguments.text.indexOf(u':');
    if (colon < 0 || arguments.isOneQuotedText())
        return m_writing.judge(line.number, {arguments.whole()});
    m_report.add(line.number, arguments.column + static_cast<int>(colon), u"colon-ends-text",
        CheckWords::tr("%1 takes the text up to this \":\" alone.").arg(line.head()));
    Value cut = arguments.values(u':').front();
    // What is left of a quoted text or of a template is nothing that could be judged.
    if (cut.kind != Value::Kind::Reference)
        cut.kind = Value::Kind::Broken;
    for (const Value &name : arguments.whole().names) {
        if (name.kind == Value::Kind::Reference)
            m_writing.judgeReference(line.number, name);
    }
    return {cut};
}

// A choice brings its own further fields along.
void ArgumentRules::takeFieldsOfChoice(CalledCommand &command, const QList<Value> &values) const
{
    const Field first = command.fields.front();
    const std::optional<QString> word = m_fields.knownText(values.front(), command.line.number);
    for (const CommandInfo &choice : first.choices()) {
        if (word != choice.word || choice.usedFields().empty())
            continue;
        command.fields = {first};
        for (const Field &field : choice.usedFields())
            command.fields += field;
    }
}

void ArgumentRules::judgeCount(const CalledCommand &command, const QList<Value> &values)
{
    const ScriptLine &line = command.line;
    const qsizetype wanted = command.fields.size();
    if (command.traits.reading != Reading::Commas)
        return;
    if (values.size() > wanted)
        m_report.add(line.number, values[wanted].column, u"surplus-arguments",
            CheckWords::tr("%1 takes %2 arguments; this one is ignored.").arg(line.head()).arg(wanted));
    else if (values.size() == 1 && wanted > 1 && command.traits.single == SingleArgument::AnswersForAll
        && standsForSomething(values.front()))
        m_report.add(line.number, values.front().column, u"one-for-all",
            CheckWords::tr("A single argument answers for all %1 fields of %2.")
                .arg(wanted)
                .arg(line.head()));
    else if (values.size() < wanted)
        judgeMissing(command, values);
}

void ArgumentRules::judgeMissing(const CalledCommand &command, const QList<Value> &values)
{
    const Field &missing = command.fields[values.size()];
    const int line = command.line.number;
    if (values.size() > 1 && command.traits.missing == MissingArgument::Raises) {
        m_report.add(line, values.back().column, u"missing-arguments",
            CheckWords::tr("%1 is missing, which ends the run with the error \"Subscript out of range\"; "
                           "write \"\" for it.")
                .arg(missing.name));
        return;
    }
    for (const Field &field : command.fields.sliced(values.size())) {
        if (field.kind == FieldKind::Variable)
            m_report.add(line, values.back().column, u"missing-arguments", Severity::Warning,
                CheckWords::tr("%1 is missing: the result is lost.").arg(field.name));
        else if (field.isRequired())
            m_report.add(line, values.back().column, u"missing-arguments", Severity::Warning,
                CheckWords::tr("%1 is missing; what needs it does not happen.").arg(field.name));
        else if (field.kind == FieldKind::Choice && command.traits.emptyChoiceDoesNothing)
            m_report.add(line, values.back().column, u"no-effect",
                CheckWords::tr("Without %1 %2 does nothing.")
                    .arg(field.name.toString(), command.line.head()));
    }
}

} // namespace plum::edition1
