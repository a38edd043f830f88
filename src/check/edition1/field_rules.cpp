#include "check/edition1/field_rules.h"

#include "check/edition1/key_rules.h"
#include "check/findings/check_rules.h"
#include "check/findings/check_words.h"
#include "check/findings/literal_rules.h"
#include "check/findings/nearest_word.h"
#include "check/findings/value_rules.h"

#include <algorithm>

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

bool isFileToSave(const ScriptLine &line)
{
    return line.nameSpace == "file"_L1 && line.command.compare("save"_L1, Qt::CaseInsensitive) == 0;
}

QStringList wordsOf(std::span<const CommandInfo> choices)
{
    QStringList words;
    for (const CommandInfo &choice : choices) {
        if (choice.existsIn(Edition::One))
            words += choice.word.toString();
    }
    return words;
}

// Fields whose text is converted, which no empty text survives.
bool isConverted(FieldKind kind)
{
    using enum FieldKind;
    return kind == Number || kind == Milliseconds || kind == Point || kind == Offset || kind == Handle
        || kind == Colour || kind == Region;
}

} // namespace

std::optional<QString> FieldRules::knownText(const Value &value, int line) const
{
    if (value.isLiteral())
        return value.text;
    if (value.kind == Value::Kind::Nothing)
        return QString();
    if (value.isReferenceTo(u"set"))
        return m_variables.constant(value.name, line);
    return {};
}

void FieldRules::judge(const CalledCommand &command, const Field &field, const Value &value)
{
    if (value.kind == Value::Kind::Broken)
        return;
    if (field.kind == FieldKind::KeyName) {
        judgeKey(m_report, command.line.number, value);
        return;
    }
    if (value.kind == Value::Kind::Nothing) {
        judgeNothing(command, field, value);
        return;
    }
    if (field.kind == FieldKind::Variable) {
        judgeVariable(command, value);
        return;
    }
    const std::optional<QString> text = knownText(value, command.line.number);
    if (value.kind == Value::Kind::Empty && field.kind == FieldKind::Text && field.isRequired())
        m_report.add(command.line.number, value.column, u"empty-value",
            CheckWords::tr("%1: nothing stands here; write \"\" for an empty text.")
                .arg(field.name.toString()));
    else if (text)
        judgeText(command, field, value, *text);
}

void FieldRules::judgeNothing(const CalledCommand &command, const Field &field, const Value &value)
{
    m_report.add(command.line.number, value.column, u"unquoted-value",
        CheckWords::tr("%1: %2 without quotes and without a dot is nothing.")
            .arg(field.name.toString(),
                value.written.trimmed().isEmpty() ? CheckWords::tr("this") : value.written));
}

void FieldRules::judgeText(
    const CalledCommand &command, const Field &field, const Value &value, const QString &text)
{
    const int line = command.line.number;
    if (field.kind == FieldKind::Choice) {
        field.takesVariable ? judgeAction(command, field, value, text)
                            : judgeChoice(command, field, value, text);
        return;
    }
    if (text.isEmpty()) {
        judgeEmpty(command, field, value);
        return;
    }
    const NumberWidth width = command.traits.has32BitPoints ? NumberWidth::Bits32 : NumberWidth::Bits16;
    if (const auto misfit = misfitOf(field, text, width)) {
        // Where errors are suppressed, the command goes on with nothing in the place of the value.
        const bool failsTheLine = command.traits.missing == MissingArgument::Raises;
        m_report.add(line, value.column, misfit->rule,
            failsTheLine ? checkRule(misfit->rule)->severity : Severity::Warning,
            CheckWords::tr("%1: %2.").arg(field.name.toString(), misfit->words));
        return;
    }
    if (field.kind == FieldKind::Milliseconds && text.trimmed().toDouble() == 0)
        m_report.add(line, value.column, u"endless-wait",
            CheckWords::tr("A wait of 0 does not return at once: it lasts 429 seconds."));
    if (field.kind == FieldKind::Path) {
        judgePlace(m_report, line, value.column, text);
        if (isFileToSave(command.line)) {
            if (text.startsWith("_pfold_"_L1) || text.startsWith("_ppfold_"_L1))
                m_report.add(line, value.column, u"odd-value",
                    CheckWords::tr("file.save takes %1 as a name: it knows no folder by it; os.path_pfold is "
                                   "that folder.")
                        .arg(text.section(u'\\', 0, 0).section(u'/', 0, 0)));
        } else {
            m_files.judge(m_report, line, value.column, text,
                {.isPicture = command.info.word == u"find_pic", .region = m_region.value_or(QString())});
        }
    }
}

// A text that is empty although the command needs one.
void FieldRules::judgeEmpty(const CalledCommand &command, const Field &field, const Value &value)
{
    if (!field.isRequired() || field.kind == FieldKind::Text)
        return;
    const QString name = field.name.toString();
    if (command.traits.emptyValueDoesNothing)
        m_report.add(command.line.number, value.column, u"no-effect",
            CheckWords::tr("Without a value for \"%1\" %2 does nothing.").arg(name, command.line.head()));
    else if (isConverted(field.kind) && command.traits.missing == MissingArgument::Raises)
        m_report.add(command.line.number, value.column, u"wrong-value",
            CheckWords::tr("%1: the empty text is no value, which ends the run.").arg(name));
    else
        m_report.add(command.line.number, value.column, u"empty-value",
            CheckWords::tr("%1: %2 needs a value here.").arg(name, command.line.head()));
}

// What is no action is the name of a variable.
void FieldRules::judgeAction(
    const CalledCommand &command, const Field &field, const Value &value, const QString &text)
{
    const int line = command.line.number;
    const QStringList words = wordsOf(field.choices());
    if (text.isEmpty()) {
        if (field.fallback == u"nothing")
            m_report.add(line, value.column, u"no-effect", Severity::Warning,
                CheckWords::tr("Without an action nothing happens when it is found."));
        return;
    }
    if (words.contains(text)) {
        if (text.startsWith("get_"_L1))
            m_variables.set(u"tarnwick_xy"_s, line, value.column);
        return;
    }
    const QString suggestion = didYouMean(text, words);
    const bool isDoubled = std::ranges::any_of(words, [&text](const QString &w) { return text == w + w; });
    m_variables.set(text, line, value.column);
    if (!suggestion.isEmpty() || isDoubled)
        m_variables.doubt(text,
            CheckWords::tr("\"%1\" is no action, so the point is stored in a variable of that name.%2")
                .arg(text, suggestion));
}

void FieldRules::judgeChoice(
    const CalledCommand &command, const Field &field, const Value &value, const QString &text)
{
    if (field.choiceCount == 0)
        return;
    const QStringList words = wordsOf(field.choices());
    bool isNumber = false;
    text.trimmed().toInt(&isNumber);
    if (words.contains(text) || (field.takesNumber && isNumber))
        return;
    const QString name = field.name.toString();
    if (text.isEmpty()) {
        if (command.traits.emptyChoiceDoesNothing)
            m_report.add(command.line.number, value.column, u"no-effect",
                CheckWords::tr("With an empty %1 %2 does nothing; it takes %3.")
                    .arg(name, command.line.head(), words.join(u", "_s)));
        else if (field.isRequired())
            m_report.add(command.line.number, value.column, u"odd-value",
                CheckWords::tr("%1: an empty text is none of %2.").arg(name, words.join(u", "_s)));
        return;
    }
    const QString suggestion = didYouMean(text, words);
    if (command.traits.anyChoiceCounts && suggestion.isEmpty())
        return;
    m_report.add(command.line.number, value.column,
        command.traits.unknownChoiceDoesNothing ? u"no-effect" : u"odd-value",
        CheckWords::tr("%1: \"%2\" is none of %3.%4").arg(name, text, words.join(u", "_s), suggestion));
}

void FieldRules::judgeVariable(const CalledCommand &command, const Value &value)
{
    const int line = command.line.number;
    if (value.isLiteral()) {
        if (value.text.isEmpty())
            m_report.add(line, value.column, u"empty-value",
                CheckWords::tr("The name of a variable is missing here."));
        else if (isFileToSave(command.line))
            m_variables.read(value.text, line, value.column);
        else
            m_variables.set(value.text, line, value.column);
        return;
    }
    if (value.isReferenceTo(u"set"))
        m_report.add(line, value.column, u"name-from-value",
            CheckWords::tr("The variable is the one that \"%1\" names; for the variable itself write \"%1\".")
                .arg(value.name));
    m_variables.setSomething();
}

} // namespace plum::edition1
