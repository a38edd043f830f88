#pragma once

#include "engine/command_table.h"

namespace plum::edition2 {

// What a line does that the language itself understands.
enum class Word {
    Comment,
    Command, // of a namespace that a handler has
    Set,
    WhenStart,
    WhenOr,
    WhenElse,
    WhenEnd,
    RepeatTimes,
    RepeatEach,
    RepeatLines,
    RepeatWhile,
    RepeatNext,
    RepeatBreak,
    RepeatEnd,
    PartStart,
    PartReturn,
    PartEnd,
    PartRun,
    PartUse,
    TryStart,
    TryFailed,
    TryEnd,
    PaceSet,
};

// How a line stands to the block around it.
enum class Place {
    Plain,
    Opens,
    Continues, // a further section of the block
    Closes,
};

struct OwnWord
{
    QStringView nameSpace;
    CommandInfo info;
    Word word;
    Place place = Place::Plain;
};

// The language's own words, as rows of a table like all others.
std::span<const OwnWord> ownWords();

// Null for a word that is not the language's own.
const OwnWord *ownWord(QStringView nameSpace, QStringView command);
const OwnWord &ownWord(Word word);

// How two values are compared.
enum class Comparison {
    Is,
    IsNot,
    Has,
    HasNot,
    Above,
    Below,
    Empty,
    NotEmpty,
};

struct ComparisonWord
{
    CommandInfo info;
    Comparison comparison;
};

std::span<const ComparisonWord> comparisonWords();

} // namespace plum::edition2
