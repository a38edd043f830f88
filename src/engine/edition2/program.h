#pragma once

#include "engine/edition2/parser.h"
#include "engine/editions/script_error.h"

#include <functional>
#include <memory>
#include <vector>

namespace plum::edition2 {

// A script of edition 2 as the runner steps through it: one instruction after the other, blocks as jumps.

// An argument that is worked out when the line runs.
struct Operand
{
    enum class Kind {
        Nothing, // a field that is left out: the empty text
        Constant,
        Variable,
        Reference, // os., me., mouse., str.
        Template,
    };

    Kind kind = Kind::Nothing;
    QString text = {}; // the constant, the variable's name or the reference
    std::vector<Operand> pieces = {}; // of a template
    Position at = {};
    const Field *field = nullptr; // what the value has to be; null where it has been checked
};

enum class Step {
    Set,
    Command,
    Jump,
    JumpUnless, // the condition holds
    BeginTimes,
    BeginEach,
    BeginLines,
    NextPass, // the next pass of a counted repetition, or a jump behind it
    BeginTry,
    EndTry,
    RunPart,
    Return,
    SetPace,
    End,
};

struct Instruction
{
    Step step = Step::End;
    QString name = {}; // of the variable, or the command's word
    Handler *handler = nullptr;
    bool touchesDesktop = false;
    bool onlyComputes = true; // takes no time to speak of, and nothing outside of the run notices
    Comparison comparison = Comparison::Is;
    int target = 0; // of a jump; for RunPart the part
    // How many counted repetitions and tries of the frame are open where a jump leads.
    int loops = 0;
    int tries = 0;
    std::vector<Operand> single = {};
    std::vector<Operand> repeated = {};
    int file = 0;
    Position at = {};
    bool isImplied = false; // stands for no line: the way from the end of a block, or out of a part
};

struct Part
{
    QString name = {};
    QStringList arguments = {};
    int entry = 0;
    int file = 0;
    Position at = {};
};

struct Program
{
    std::vector<Instruction> instructions; // the script's own first
    std::vector<Part> parts;
    QStringList files; // paths as the user knows them; the script itself first
};

struct LinkNeeds
{
    const ScriptVocabulary &vocabulary;
    std::function<Handler *(const QString &nameSpace)> handler;

    // The text of another file of the app; nothing when it cannot be read.
    std::function<std::optional<QString>(const QString &file)> load;
};

struct Linked
{
    std::shared_ptr<const Program> program; // null when there are mistakes
    QList<ScriptMistake> mistakes;
};

// Parses `text` and the files that it uses, and links what it finds. `path` is how mistakes name the script.
// The program points into the vocabulary, which outlives it.
Linked link(const QString &path, QStringView text, const LinkNeeds &needs);

// The same for a script that has been parsed.
Linked link(const QString &path, Parsed parsed, const LinkNeeds &needs);

} // namespace plum::edition2
