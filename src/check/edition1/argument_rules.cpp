#include "check/edition1/argument_rules.h"

#include "check/edition1/key_rules.h"
#include "check/findings/literal_rules.h"
#include "check/findings/nearest_word.h"
#include "check/findings/value_rules.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';

bool isFileToSave(const ScriptLine &line)
{
    return line.nameSpace == "file"_L1 && line.command.compare("save"_L1, Qt::CaseInsensitive) == 0;
}

} // namespace

void ArgumentRules::judge(const ScriptLine &line, const CommandInfo &info, const CommandTraits &traits)
{
    Command command{line, info, traits, {}};
    for (const Field &field : info.usedFields())
        command.fields += field;
    if (!line.arguments) {
        if (!command.fields.isEmpty())
            m_report.add(line.number, 1, u"inherited-arguments",
                u"Without arguments of its own, %1 takes those of the line before."_s.arg(line.head()));
        return;
    }
    if (command.fields.isEmpty()) {
        if (!line.arguments->text.trimmed().isEmpty())
            m_report.add(line.number, line.arguments->column, u"surplus-arguments",
                u"%1 takes no arguments."_s.arg(line.head()));
        return;
    }
    if (traits.reading == Reading::Raw)
        return;

    const QList<Value> values = valuesOf(command);
    if (command.fields.front().kind == FieldKind::KeyList) {
        judgeKeys(command, values);
        return;
    }
    // A choice brings its own further fields along.
    const Field &first = command.fields.front();
    if (first.choiceCount > 0 && !values.isEmpty() && values.front().isLiteral()) {
        for (const CommandInfo &choice : first.choices()) {
            if (choice.word != values.front().text || choice.usedFields().empty())
                continue;
            command.fields = {first};
            for (const Field &field : choice.usedFields())
                command.fields += field;
        }
    }
    judgeCount(command, values);
    const bool answersForAll = values.size() == 1 && command.fields.size() > 1;
    for (qsizetype i = 0; i < command.fields.size(); ++i) {
        if (answersForAll && i > 0 && traits.missing == MissingArgument::IsEmpty)
            break;
        if (answersForAll || i < values.size())
            judgeField(command, command.fields[i], answersForAll ? values.front() : values[i], answersForAll && i > 0);
    }
}

void ArgumentRules::judgeAssignment(const ScriptLine &line)
{
    if (!line.arguments) {
        m_report.add(line.number, 1, u"inherited-arguments",
            u"Without a value of its own, %1 takes the arguments of the line before."_s.arg(line.head()));
        m_variables.set(line.command, line.number, line.commandColumn);
        return;
    }
    const Value value = line.arguments->whole();
    QList<bool> isJudged{false};
    judgeQuotes(line.number, {value}, isJudged);
    if (!isJudged.front()) {
        judgeWriting(line.number, value, false);
        if (value.kind == Value::Kind::Nothing)
            m_report.add(line.number, value.column, u"unquoted-value",
                u"%1 without quotes is nothing: \"%2\" becomes the empty text."_s.arg(value.written, line.command));
    }
    std::optional<QString> known;
    if (value.isLiteral())
        known = value.text;
    else if (value.kind == Value::Kind::Nothing)
        known = QString();
    m_variables.set(line.command, line.number, line.commandColumn, known);
    if (value.isQuoted)
        judgeSecret(m_report, line.number, value.column, line.command, value.text);
    if (value.isLiteral())
        judgePlace(m_report, line.number, value.column, value.text);
}

QList<Value> ArgumentRules::valuesOf(const Command &command)
{
    const Arguments &arguments = *command.line.arguments;
    if (command.traits.reading == Reading::Colon) {
        judgeColon(command.line);
        const Value first = arguments.values(u':').front();
        QList<bool> isJudged{false};
        judgeQuotes(command.line.number, {first}, isJudged);
        if (!isJudged.front())
            judgeWriting(command.line.number, first, false);
        return {first};
    }
    QList<Value> values = arguments.values(u',');
    QList<bool> isJudged(values.size(), false);
    judgeQuotes(command.line.number, values, isJudged);
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (!isJudged[i])
            judgeWriting(command.line.number, values[i], values.size() > 1);
    }
    return values;
}

void ArgumentRules::judgeColon(const ScriptLine &line)
{
    const Arguments &arguments = *line.arguments;
    const qsizetype colon = arguments.text.indexOf(u':');
    if (colon >= 0 && !arguments.isOneQuotedText())
        m_report.add(line.number, arguments.column + static_cast<int>(colon), u"colon-ends-text",
            u"%1 takes the text up to this \":\" alone."_s.arg(line.head()));
}

// A quoted text that holds the separator falls into pieces that each keep one of its quotes.
void ArgumentRules::judgeQuotes(int line, const QList<Value> &values, QList<bool> &isJudged)
{
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QString &text = values[i].written;
        if (isJudged[i] || text.count(quote) % 2 == 0)
            continue;
        isJudged[i] = true;
        qsizetype last = i + 1;
        while (last < values.size() && values[last].written.count(quote) % 2 == 0)
            ++last;
        if (text.trimmed().startsWith(quote) && last < values.size()) {
            for (qsizetype j = i; j <= last; ++j)
                isJudged[j] = true;
            m_report.add(line, values[i].column, u"comma-in-quotes",
                u"The comma splits this text in spite of its quotes; write _,_ for it."_s);
        } else {
            m_report.add(line, values[i].column, u"unpaired-quote", u"The quote of %1 has no partner."_s.arg(text));
        }
    }
}

void ArgumentRules::judgeWriting(int line, const Value &value, bool isSeparated)
{
    const QString trimmed = value.written.trimmed();
    if (!value.isQuoted && trimmed.size() != value.written.size() && !trimmed.isEmpty()
        && value.kind != Value::Kind::Template) {
        const Value meant = valueOf(trimmed, value.column);
        if (meant.isQuoted || meant.kind == Value::Kind::Reference) {
            m_report.add(line, value.column, u"blank-around-value",
                u"The blank beside %1 makes it another value than meant."_s.arg(trimmed));
            if (meant.kind == Value::Kind::Reference)
                judgeReference(line, meant);
            return;
        }
    }
    switch (value.kind) {
    case Value::Kind::Reference:
        judgeReference(line, value);
        break;
    case Value::Kind::Template:
        judgeTemplate(line, value);
        break;
    default:
        if (!value.isQuoted && value.written.contains("+("_L1) && value.written.contains("+?+"_L1))
            m_report.add(line, value.column, u"template-open",
                u"A template ends in \")\"; this one is taken as it stands."_s);
        else if (!value.isQuoted && value.kind == Value::Kind::Literal) {
            const QString near = nearestWord(
                value.prefix, {u"os"_s, u"set"_s, u"str"_s, u"me"_s, u"mouse"_s});
            if (!near.isEmpty() || value.prefix.isEmpty())
                m_report.add(line, value.column, u"unknown-prefix",
                    u"\"%1\" is no prefix of a reference, so %2 stands for itself.%3"_s.arg(value.prefix,
                        value.written, near.isEmpty() ? QString() : u" Did you mean \"%1.\"?"_s.arg(near)));
        } else if (value.isQuoted && isSeparated && value.written.size() > 2
            && value.written.sliced(1, value.written.size() - 2).contains(quote)) {
            m_report.add(line, value.column, u"unpaired-quote",
                u"A quote inside the quotes belongs to the text; a comma may be missing."_s);
        }
    }
}

void ArgumentRules::judgeReference(int line, const Value &value)
{
    if (value.prefix == "set"_L1) {
        m_variables.read(value.name, line, value.column);
        return;
    }
    static const QHash<QString, QStringList> known{
        {u"os"_s,
            {u"get_clipboard"_s, u"path_pfold"_s, u"path_ppfold"_s, u"path_package"_s, u"path_package_name"_s,
                u"path_desktop"_s}},
        {u"str"_s, {u"r"_s}},
        {u"me"_s, {u"text_input"_s, u"drag"_s, u"drag_text"_s, u"enter_input"_s}},
        {u"mouse"_s, {u"xy"_s}},
    };
    const QStringList names = known.value(value.prefix);
    static const QRegularExpression numbered(u"\\Aenter_input.*_[0-9]+\\z"_s);
    if (names.contains(value.name) || (value.prefix == "me"_L1 && numbered.match(value.name).hasMatch()))
        return;
    m_report.add(line, value.column, u"unknown-reference",
        u"There is no %1.%2; it is nothing.%3"_s.arg(
            value.prefix, value.name, didYouMean(value.name, names, value.prefix + u'.')));
}

void ArgumentRules::judgeTemplate(int line, const Value &value)
{
    for (const Value &name : value.names) {
        if (name.kind == Value::Kind::Reference)
            judgeReference(line, name);
        else
            m_report.add(line, name.column, u"unquoted-value",
                name.written.isEmpty() ? u"A template's name is missing; its slot stays empty."_s
                                       : u"%1 is no reference; its slot does not get a variable."_s.arg(name.written));
    }
    const bool fits = value.names.size() == 1 ? value.slotCount >= 1 : value.slotCount == value.names.size();
    if (!fits)
        m_report.add(line, value.column, u"template-slots",
            u"The template has %1 slots (+?+) and %2 names."_s.arg(value.slotCount).arg(value.names.size()));
}

void ArgumentRules::judgeKeys(const Command &command, const QList<Value> &values)
{
    for (const Value &value : values)
        judgeKey(m_report, command.line.number, value);
}

void ArgumentRules::judgeCount(const Command &command, const QList<Value> &values)
{
    const ScriptLine &line = command.line;
    const qsizetype wanted = command.fields.size();
    if (command.traits.reading != Reading::Commas)
        return;
    if (values.size() > wanted) {
        m_report.add(line.number, values[wanted].column, u"surplus-arguments",
            u"%1 takes %2 arguments; this one is ignored."_s.arg(line.head()).arg(wanted));
    } else if (values.size() == 1 && wanted > 1) {
        if (command.traits.missing == MissingArgument::IsEmpty) {
            if (command.fields[1].kind == FieldKind::Variable)
                m_report.add(line.number, values.front().column, u"missing-arguments", Severity::Warning,
                    u"%1 is missing: the result is lost."_s.arg(command.fields[1].name));
        } else if (values.front().kind != Value::Kind::Empty && !(values.front().isQuoted && values.front().text.isEmpty())) {
            m_report.add(line.number, values.front().column, u"one-for-all",
                u"A single argument answers for all %1 fields of %2."_s.arg(wanted).arg(line.head()));
        }
    } else if (values.size() < wanted) {
        const Field &missing = command.fields[values.size()];
        const bool ends = command.traits.missing == MissingArgument::Raises;
        if (command.traits.missing != MissingArgument::IsEmpty)
            m_report.add(line.number, values.back().column, u"missing-arguments",
                ends ? Severity::Error : Severity::Warning,
                ends ? u"%1 is missing, which ends the run with the error \"Subscript out of range\"; write \"\" for it."_s
                           .arg(missing.name)
                     : u"%1 is missing; what needs it does not happen."_s.arg(missing.name));
        else if (missing.kind == FieldKind::Variable)
            m_report.add(line.number, values.back().column, u"missing-arguments", Severity::Warning,
                u"%1 is missing: the result is lost."_s.arg(missing.name));
    }
}

void ArgumentRules::judgeField(
    const Command &command, const Field &field, const Value &value, bool answersForAll)
{
    if (field.kind == FieldKind::KeyName) {
        judgeKey(m_report, command.line.number, value);
        return;
    }
    if (value.kind == Value::Kind::Nothing) {
        if (!answersForAll)
            judgeNothing(command, field, value);
        return;
    }
    if (field.kind == FieldKind::Variable) {
        judgeVariable(command, field, value);
        return;
    }
    if (value.isLiteral()) {
        judgeText(command, field, value, value.text);
    } else if (value.kind == Value::Kind::Reference && value.prefix == "set"_L1) {
        if (const auto constant = m_variables.constant(value.name, command.line.number))
            judgeText(command, field, value, *constant);
    }
}

void ArgumentRules::judgeText(
    const Command &command, const Field &field, const Value &value, const QString &text)
{
    const int line = command.line.number;
    if (field.kind == FieldKind::Choice) {
        judgeChoice(command, field, value, text);
        return;
    }
    if (text.isEmpty() && field.kind == FieldKind::Milliseconds && field.fallback.isEmpty()) {
        m_report.add(line, value.column, u"wrong-value", u"\"\" is not a number of milliseconds."_s);
        return;
    }
    if (text.isEmpty() && field.kind == FieldKind::Colour) {
        m_report.add(line, value.column, u"wrong-value", u"A colour is missing here, RRGGBB."_s);
        return;
    }
    const NumberWidth width = command.traits.has32BitPoints ? NumberWidth::Bits32 : NumberWidth::Bits16;
    if (const auto misfit = misfitOf(field, text, width)) {
        m_report.add(line, value.column, misfit->rule,
            u"%1: \"%2\" %3."_s.arg(field.name.toString(), text, misfit->sentence));
        return;
    }
    if (field.kind == FieldKind::Milliseconds && !text.isEmpty() && text.trimmed().toDouble() == 0)
        m_report.add(line, value.column, u"endless-wait",
            u"A wait of 0 does not return at once: it lasts 429 seconds."_s);
    if (field.kind == FieldKind::Path) {
        judgePlace(m_report, line, value.column, text);
        if (!isFileToSave(command.line))
            m_files.judge(m_report, line, value.column, text, command.info.word == u"find_pic");
    }
}

void ArgumentRules::judgeChoice(
    const Command &command, const Field &field, const Value &value, const QString &text)
{
    if (field.takesVariable) {
        for (const CommandInfo &choice : field.choices()) {
            if (choice.word == text) {
                if (text.startsWith("get_"_L1))
                    m_variables.set(u"tarnwick_xy"_s, command.line.number, value.column);
                return;
            }
        }
        if (!text.isEmpty())
            m_variables.set(text, command.line.number, value.column);
        return;
    }
    if (command.traits.anyChoiceCounts || field.choiceCount == 0)
        return;
    QStringList words;
    for (const CommandInfo &choice : field.choices())
        words += choice.word.toString();
    bool isNumber = false;
    text.trimmed().toDouble(&isNumber);
    if (words.contains(text) || (field.takesNumber && isNumber))
        return;
    if (text.isEmpty()) {
        if (command.traits.emptyChoiceDoesNothing)
            m_report.add(command.line.number, value.column, u"no-effect",
                u"With an empty %1 %2 writes nothing; the one that writes is \"append\"."_s.arg(
                    field.name.toString(), command.line.head()));
        return;
    }
    m_report.add(command.line.number, value.column,
        command.traits.unknownChoiceDoesNothing ? u"no-effect" : u"odd-value",
        u"%1: \"%2\" is none of %3.%4"_s.arg(
            field.name.toString(), text, words.join(u", "_s), didYouMean(text, words)));
}

void ArgumentRules::judgeVariable(const Command &command, const Field &, const Value &value)
{
    const int line = command.line.number;
    if (value.isLiteral()) {
        if (value.text.isEmpty())
            m_report.add(line, value.column, u"odd-value", u"The name of a variable is missing here."_s);
        else if (isFileToSave(command.line))
            m_variables.read(value.text, line, value.column);
        else
            m_variables.set(value.text, line, value.column);
        return;
    }
    if (value.kind == Value::Kind::Reference && value.prefix == "set"_L1)
        m_report.add(line, value.column, u"name-from-value",
            u"The variable is the one that \"%1\" names; for the variable itself write \"%1\"."_s.arg(value.name));
    m_variables.setSomething();
}

void ArgumentRules::judgeNothing(const Command &command, const Field &field, const Value &value)
{
    m_report.add(command.line.number, value.column, u"unquoted-value",
        u"%1: %2 without quotes and without a dot is nothing."_s.arg(
            field.name.toString(), value.written.trimmed().isEmpty() ? u"this"_s : value.written));
}

} // namespace plum::edition1
