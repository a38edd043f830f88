#pragma once

#include "engine/command_call.h"

#include <QList>
#include <QString>

#include <array>
#include <initializer_list>
#include <span>

namespace plum {

// What a field of a command holds, for the code that reads it and for the person who writes it.
enum class FieldKind {
    None, // no such field
    Text,
    Variable, // the name of the variable that receives the result
    Number,
    Milliseconds,
    Point, // "x:y" in screen pixels; a single number means both
    Offset, // "dx:dy"
    Region, // "x:y:width:height"
    Choice, // one of a few words
    Handle, // a window's number
    KeyName,
    KeyList, // key names with commas between them; takes all the rest of the line
    Path,
    Colour, // RRGGBB
    Url,
};

struct CommandInfo;

struct Field
{
    QStringView name;
    FieldKind kind = FieldKind::None;
    QStringView fallback = {}; // what an empty field means, for people; a field that has one may be left out

    bool mayBeMissing = false;
    bool mayRepeat = false; // takes as many arguments as the fields behind it leave over
    bool takesNumber = false; // a Choice: a number is a word of its own
    bool takesVariable = false; // a Choice: any other word is the variable that receives the result

    // The words of a Choice. A word that has fields of its own puts them in the place of those that follow
    // this field.
    std::span<const CommandInfo> choices() const;

    const CommandInfo *firstChoice = nullptr;
    std::size_t choiceCount = 0;

    constexpr bool isRequired() const { return !mayBeMissing && fallback.isEmpty(); }

    constexpr Field optional() const
    {
        Field field = *this;
        field.mayBeMissing = true;
        return field;
    }

    // None, one or several arguments.
    constexpr Field repeated() const
    {
        Field field = *this;
        field.mayRepeat = true;
        return field;
    }

    constexpr Field orNumber() const
    {
        Field field = *this;
        field.takesNumber = true;
        return field;
    }

    constexpr Field oneOf(std::span<const CommandInfo> words) const;

    constexpr Field oneOfOrVariable(std::span<const CommandInfo> words) const;
};

inline constexpr int maxFields = 8;

// Whether a command looks at the desktop or changes it. The pause before such a command keeps the desktop and
// the person in front of it able to follow a script.
enum class Touches {
    Nothing,
    Desktop,
};

// What a command brings about outside of its run's own variables, or learns from there.
enum class Effect {
    NoEffect, // no such entry
    Nothing, // said of a row that would seem to do something
    SeeScreen,
    SeeClipboard,
    SeeWindows, // which there are, and where
    SeePointer,
    ReadFile, // its content, its name or that it is there
    WriteFile,
    Contact, // a server, or whoever a page leads to
    Keys,
    Paste, // types a text by way of the clipboard, which it does not hand to the script
    Mouse,
    SetClipboard,
    ChangeWindows,
    Run, // starts a program, or opens something with one
    Evaluate, // JavaScript
    LockScreen,
    SwitchMonitorOff,
    LogOff,
    ShutDown,
    Restart,

    // Not felt outside, but followed all the same.
    TakeGiven, // the variable receives what the user typed; with a field, cut at that
    Calculate, // the field is an expression, which has references in it
};

// How the field of an effect names what it is about.
enum class ObjectForm {
    Resolved, // a path by the rule of `_pfold_`, or an address
    AsWritten, // a path or a text as it stands
    Folder, // a folder in which a file is made; empty: that of the download helper
    Page, // a piece of HTML: without markup it reaches nothing
};

struct CommandEffect
{
    Effect effect = Effect::NoEffect;
    int field = -1; // whose value says what it is about; -1: about nothing in particular
    ObjectForm form = ObjectForm::Resolved;
};

// The effects of one row. A row that names none is taken to do nothing if it touches no desktop and has
// neither a path nor an address among its fields, and to do anything otherwise.
class CommandEffects
{
public:
    static constexpr std::size_t most = 4;

    constexpr CommandEffects() = default;
    constexpr CommandEffects(std::initializer_list<CommandEffect> effects)
    {
        for (const CommandEffect &effect : effects)
            m_all[m_count++] = effect;
    }

    constexpr bool areNamed() const { return m_count > 0; }
    constexpr const CommandEffect *begin() const { return m_all.data(); }
    constexpr const CommandEffect *end() const { return m_all.data() + m_count; }

private:
    std::array<CommandEffect, most> m_all{};
    std::size_t m_count = 0;
};

// In which editions of the language a row exists.
enum class Editions {
    One,
    Two,
    Both,
};

// One row of a namespace's table: everything a person, the editor or a script checker has to know.
struct CommandInfo
{
    QStringView word;
    std::array<Field, maxFields> fields;
    QStringView summary; // one sentence
    Touches touches = Touches::Nothing;
    Editions editions = Editions::Both;
    CommandEffects effects = {}; // what it reaches outside of the run

    std::span<const Field> usedFields() const;

    // It neither waits nor reaches out of its run.
    bool onlyComputes() const;

    constexpr bool existsIn(Edition edition) const
    {
        return editions == Editions::Both || (editions == Editions::One) == (edition == Edition::One);
    }
};

inline std::span<const CommandInfo> Field::choices() const
{
    return {firstChoice, choiceCount};
}

constexpr Field Field::oneOf(std::span<const CommandInfo> words) const
{
    Field field = *this;
    field.firstChoice = words.data();
    field.choiceCount = words.size();
    return field;
}

constexpr Field Field::oneOfOrVariable(std::span<const CommandInfo> words) const
{
    Field field = oneOf(words);
    field.takesVariable = true;
    return field;
}

// How command words are compared with the table's. Edition 2 compares exactly, always.
enum class WordMatch {
    Exact,
    LowerCased, // the script's word is lower-cased first
};

// The commands of one script namespace.
class Handler
{
public:
    virtual ~Handler() = default;

    // Runs one line. A command that the namespace does not have does nothing.
    virtual Next call(const CommandCall &call) = 0;

    // The namespace's table, in the order in which words are tested. A word that ends in "_" stands for every
    // word that begins so, an empty one for any word.
    virtual QList<CommandInfo> commands() const = 0;
};

// A member function of `Commands` that carries out a row. Most say nothing about what comes next.
template <typename Commands> class Routine
{
public:
    using GoesOn = void (Commands::*)(const CommandCall &);
    using Decides = Next (Commands::*)(const CommandCall &);

    constexpr Routine(GoesOn routine)
        : m_goesOn(routine)
    {
    }
    constexpr Routine(Decides routine)
        : m_decides(routine)
    {
    }

    Next operator()(Commands &commands, const CommandCall &call) const
    {
        if (m_decides)
            return (commands.*m_decides)(call);
        (commands.*m_goesOn)(call);
        return Next::GoOn;
    }

private:
    GoesOn m_goesOn = nullptr;
    Decides m_decides = nullptr;
};

// A namespace whose rows are member functions of `Commands`, found by walking its `table()`:
//
//   class TimeCommands final : public TableHandler<TimeCommands> { ... static std::span<const Row> table();
//   };
template <typename Commands> class TableHandler : public Handler
{
public:
    struct Row
    {
        CommandInfo info;
        Routine<Commands> routine;
    };

    explicit TableHandler(WordMatch match = WordMatch::Exact)
        : m_match(match)
    {
    }

    Next call(const CommandCall &call) override
    {
        const bool lowers = m_match == WordMatch::LowerCased && call.edition() == Edition::One;
        const QString word = lowers ? call.command().toLower() : call.command();
        for (const Row &row : Commands::table()) {
            if (row.info.word == word && row.info.existsIn(call.edition()))
                return row.routine(static_cast<Commands &>(*this), call);
        }
        return Next::GoOn;
    }

    QList<CommandInfo> commands() const override
    {
        QList<CommandInfo> infos;
        for (const Row &row : Commands::table())
            infos += row.info;
        return infos;
    }

private:
    WordMatch m_match;
};

} // namespace plum
