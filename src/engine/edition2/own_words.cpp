#include "engine/edition2/own_words.h"

#include <QList>

#include <algorithm>

namespace plum::edition2 {

namespace {

using enum FieldKind;

constexpr Field otherValue{u"value", Text};

QList<CommandInfo> choicesOf(std::span<const ComparisonWord> words)
{
    QList<CommandInfo> choices;
    for (const ComparisonWord &word : words)
        choices += word.info;
    return choices;
}

CommandInfo info(QStringView word, std::array<Field, maxFields> fields, QStringView summary)
{
    return {word, fields, summary, Touches::Nothing, Editions::Two};
}

std::array<Field, maxFields> condition()
{
    static const QList<CommandInfo> comparisons = choicesOf(comparisonWords());
    return {{{u"value", Text}, Field{u"comparison", Choice}.oneOf(comparisons)}};
}

} // namespace

std::span<const ComparisonWord> comparisonWords()
{
    using enum Comparison;
    static constexpr std::array words{
        ComparisonWord{{u"is", {{otherValue}}, u"The same number, or exactly the same text."}, Is},
        ComparisonWord{{u"is_not", {{otherValue}}, u"Another number or text."}, IsNot},
        ComparisonWord{{u"has", {{otherValue}}, u"The text contains the other."}, Has},
        ComparisonWord{{u"has_not", {{otherValue}}, u"The text does not contain the other."}, HasNot},
        ComparisonWord{{u"above", {{otherValue}}, u"The number is larger."}, Above},
        ComparisonWord{{u"below", {{otherValue}}, u"The number is smaller."}, Below},
        ComparisonWord{{u"empty", {}, u"Nothing stands there."}, Empty},
        ComparisonWord{{u"not_empty", {}, u"Something stands there."}, NotEmpty},
    };
    return words;
}

std::span<const OwnWord> ownWords()
{
    using enum Place;
    static const std::array words{
        OwnWord{u"set", info({}, {{{u"value", Text}}}, u"Gives the variable named after the dot a value."),
            Word::Set},
        OwnWord{u"when", info(u"start", condition(), u"Runs the lines that follow if this holds."),
            Word::WhenStart, Opens},
        OwnWord{u"when",
            info(u"or", condition(), u"Runs the lines that follow if nothing before held and this does."),
            Word::WhenOr, Continues},
        OwnWord{u"when", info(u"else", {}, u"Runs the lines that follow if nothing before held."),
            Word::WhenElse, Continues},
        OwnWord{u"when", info(u"end", {}, u"Closes when.start."), Word::WhenEnd, Closes},
        OwnWord{u"repeat",
            info(u"times", {{{u"count", Number}, Field{u"counter", Variable}.optional()}},
                u"Repeats the lines that follow; the counter begins at 1."),
            Word::RepeatTimes, Opens},
        OwnWord{u"repeat",
            info(u"each", {{{u"text", Text}, {u"item", Variable}, {u"separator", Text, u"a comma"}}},
                u"Repeats the lines that follow for each piece of a text between separators."),
            Word::RepeatEach, Opens},
        OwnWord{u"repeat",
            info(u"lines", {{{u"text", Text}, {u"line", Variable}}},
                u"Repeats the lines that follow for each line of a text."),
            Word::RepeatLines, Opens},
        OwnWord{u"repeat", info(u"while", condition(), u"Repeats the lines that follow while this holds."),
            Word::RepeatWhile, Opens},
        OwnWord{u"repeat", info(u"next", {}, u"Goes on with the next repetition."), Word::RepeatNext},
        OwnWord{u"repeat", info(u"break", {}, u"Leaves the repetition."), Word::RepeatBreak},
        OwnWord{u"repeat", info(u"end", {}, u"Closes a repetition."), Word::RepeatEnd, Closes},
        OwnWord{u"part",
            info(u"start", {{{u"name", Variable}, Field{u"argument", Variable}.repeated()}},
                u"Names the lines that follow, so that part.run can run them."),
            Word::PartStart, Opens},
        OwnWord{u"part",
            info(u"return", {{Field{u"value", Text}.optional()}}, u"Leaves the part, with a value."),
            Word::PartReturn},
        OwnWord{u"part", info(u"end", {}, u"Closes part.start."), Word::PartEnd, Closes},
        OwnWord{u"part",
            info(u"run",
                {{{u"name", Variable}, Field{u"value", Text}.repeated(),
                    Field{u"result", Variable}.optional()}},
                u"Runs a part with a value for each of its arguments and stores what it returns."),
            Word::PartRun},
        OwnWord{u"part", info(u"use", {{{u"file", Path}}}, u"Brings the parts of another file of the app."),
            Word::PartUse},
        OwnWord{u"try", info(u"start", {}, u"Runs the lines that follow up to one that fails."),
            Word::TryStart, Opens},
        OwnWord{u"try",
            info(u"failed", {{Field{u"reason", Variable}.optional()}},
                u"Runs the lines that follow when a line before has failed."),
            Word::TryFailed, Continues},
        OwnWord{u"try", info(u"end", {}, u"Closes try.start."), Word::TryEnd, Closes},
        OwnWord{u"pace",
            info(u"set", {{{u"pause", Milliseconds}}},
                u"Changes the pause before commands that touch the desktop."),
            Word::PaceSet},
    };
    return words;
}

const OwnWord *ownWord(QStringView nameSpace, QStringView command)
{
    const auto found = std::ranges::find_if(ownWords(), [&](const OwnWord &word) {
        return word.nameSpace == nameSpace && (word.info.word.isEmpty() || word.info.word == command);
    });
    return found == ownWords().end() ? nullptr : &*found;
}

const OwnWord &ownWord(Word word)
{
    return *std::ranges::find(ownWords(), word, &OwnWord::word);
}

} // namespace plum::edition2
