#pragma once

#include <QString>

namespace plum::edition1 {

// How a command of edition 1 reads its argument text, where that is not at commas.
enum class Reading {
    Commas,
    Colon, // one text, up to the first ":"
    Whole, // all of it as one value
    Raw, // all of it as written
};

// What becomes of an argument that is not there beside others that are.
enum class MissingArgument {
    Raises, // a subscript error, which ends the run
    IsEmpty,
};

// What a single argument means for the fields behind the first.
enum class SingleArgument {
    AnswersForAll,
    LeavesOthersEmpty,
};

// What the rules of the language say of a command beside its table.
struct CommandTraits
{
    Reading reading = Reading::Commas;
    MissingArgument missing = MissingArgument::Raises;
    SingleArgument single = SingleArgument::AnswersForAll;
    bool lowerCasesWord = false;
    bool ignoresArguments = false; // which it may have all the same
    bool has32BitPoints = false;
    bool unknownChoiceDoesNothing = false; // a word that is no choice means that nothing happens
    bool anyChoiceCounts = false; // a word that is no choice has a meaning of its own
    bool emptyChoiceDoesNothing = false;
    bool emptyValueDoesNothing
        = false; // without its value the command does nothing, and does not fail either
};

CommandTraits traitsOf(const QString &nameSpace, const QString &command);

} // namespace plum::edition1
