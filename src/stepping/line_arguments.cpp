#include "stepping/line_arguments.h"

#include "check/edition1/command_traits.h"
#include "check/edition1/script_line.h"
#include "check/findings/words.h"
#include "engine/edition2/fields.h"
#include "engine/edition2/own_words.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The values of a line of edition 1, split as its command does it.
QList<edition1::Value> valuesOf(const edition1::ScriptLine &line, edition1::Reading reading)
{
    using edition1::Reading;
    if (reading == Reading::Commas)
        return line.arguments->values(u',');
    if (reading == Reading::Colon)
        return line.arguments->values(u':').first(1);
    return {line.arguments->whole()};
}

QList<LineArgument> firstEditionArguments(const QString &text, const ScriptVocabulary &vocabulary)
{
    const auto line = edition1::ScriptLine::read(text, 1);
    if (!line || !line->arguments)
        return {};
    const CommandInfo *info = firstEditionRow(vocabulary, line->nameSpace, line->command);
    const std::span<const Field> fields = info ? info->usedFields() : std::span<const Field>();
    const edition1::Reading reading = edition1::traitsOf(line->nameSpace, line->command).reading;
    QList<LineArgument> arguments;
    for (const edition1::Value &value : valuesOf(*line, reading)) {
        const auto index = static_cast<std::size_t>(arguments.size());
        const bool hasField = index < fields.size();
        arguments += {hasField ? fields[index].name.toString() : u"argument %1"_s.arg(index + 1),
            value.written, reading == edition1::Reading::Raw};
    }
    return arguments;
}

QList<LineArgument> secondEditionArguments(const QString &text, const ScriptVocabulary &vocabulary)
{
    QList<edition2::Mistake> mistakes;
    const edition2::Line line = edition2::readLine(text, 1, mistakes);
    const edition2::OwnWord *own = edition2::ownWord(line.nameSpace, line.command);
    const CommandInfo *info = own ? &own->info : vocabulary.find(line.nameSpace, line.command);
    if (!info)
        return {};
    const edition2::BoundLine bound = edition2::bindFields(line, *info, mistakes);
    QList<LineArgument> arguments;
    for (const auto *values : {&bound.single, &bound.repeated}) {
        for (const edition2::BoundValue &each : *values) {
            if (each.value && each.field)
                arguments += {each.field->name.toString(),
                    each.value->form == edition2::Form::Word ? each.value->text
                                                             : edition2::print(*each.value),
                    each.value->form == edition2::Form::Word};
        }
    }
    return arguments;
}

} // namespace

QList<LineArgument> argumentsOf(const RunView &run, int frame, const ScriptVocabulary &vocabulary)
{
    return run.edition() == 1 ? firstEditionArguments(run.text(frame), vocabulary)
                              : secondEditionArguments(run.text(frame), vocabulary);
}

Evaluation valueOf(RunView &run, int frame, const LineArgument &argument)
{
    return argument.isValue ? Evaluation{argument.written} : run.evaluate(frame, argument.written);
}

} // namespace plum
