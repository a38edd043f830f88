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

// What becomes of an argument that is not there.
enum class MissingArgument {
    Raises, // a subscript error, which ends the run
    SkipsStep, // errors are suppressed: the step that wanted it does not happen
    IsEmpty,
};

// What the rules of the language say of a command beside its table.
struct CommandTraits
{
    Reading reading = Reading::Commas;
    MissingArgument missing = MissingArgument::Raises;
    bool lowerCasesWord = false;
    bool has32BitPoints = false;
    bool unknownChoiceDoesNothing = false; // a word that is no choice means that nothing happens
    bool anyChoiceCounts = false; // a word that is no choice has a meaning of its own
    bool emptyChoiceDoesNothing = false;
};

CommandTraits traitsOf(const QString &nameSpace, const QString &command);

} // namespace plum::edition1
