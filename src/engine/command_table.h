#pragma once

#include "engine/argument_reader.h"

#include <QList>
#include <QString>

#include <array>
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
    Choice, // one of a few words, named in the command's summary
    Handle, // a window's number
    KeyName,
    KeyList, // key names with commas between them; takes all the rest of the line
    Path,
    Colour, // RRGGBB
    Url,
};

struct Field
{
    QStringView name;
    FieldKind kind = FieldKind::None;
    QStringView fallback = {}; // what an empty field means; empty when it means just that
};

inline constexpr int maxFields = 7;

// One row of a namespace's table: everything a person, the editor or a script checker has to know.
struct CommandInfo
{
    QStringView word;
    std::array<Field, maxFields> fields;
    QStringView summary; // one sentence

    std::span<const Field> usedFields() const;
};

// How command words are compared with the table's.
enum class WordMatch {
    Exact,
    LowerCased, // the script's word is lower-cased first
};

// One command line on its way to a routine.
class CommandCall
{
public:
    CommandCall(const ArgumentReader &reader, const QString &command, const QString &arguments)
        : m_reader(reader)
        , m_command(command)
        , m_arguments(arguments)
    {
    }

    // The word after the namespace, as the script wrote it.
    const QString &command() const { return m_command; }

    // Everything after the head, unevaluated.
    const QString &arguments() const { return m_arguments; }

    // Field `index` (from 0) of the arguments. Read anew at each call, so the order of the calls is the
    // order in which variables are looked up.
    QString arg(int index, const QString &separator = QStringLiteral(","),
        UnknownVariable unknown = UnknownVariable::IsItsName) const
    {
        return m_reader.GetArg(m_arguments, separator, index, unknown);
    }

    // The whole argument text as one field.
    QString whole(UnknownVariable unknown = UnknownVariable::IsItsName) const
    {
        return m_reader.GetArg(m_arguments, QString(), 0, unknown);
    }

    const ArgumentReader &reader() const { return m_reader; }

private:
    const ArgumentReader &m_reader;
    const QString &m_command;
    const QString &m_arguments;
};

// The commands of one script namespace.
class Handler
{
public:
    virtual ~Handler() = default;

    // Runs one line. A command that the namespace does not have does nothing.
    virtual void call(const QString &command, const QString &arguments) = 0;

    // The namespace's table, in the order in which words are tested.
    virtual QList<CommandInfo> commands() const = 0;
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
        void (Commands::*routine)(const CommandCall &);
    };

    explicit TableHandler(const ArgumentReader &reader, WordMatch match = WordMatch::Exact)
        : m_reader(reader)
        , m_match(match)
    {
    }

    void call(const QString &command, const QString &arguments) override
    {
        const QString word = m_match == WordMatch::LowerCased ? command.toLower() : command;
        for (const Row &row : Commands::table()) {
            if (row.info.word == word) {
                (static_cast<Commands *>(this)->*row.routine)(CommandCall(m_reader, command, arguments));
                return;
            }
        }
    }

    QList<CommandInfo> commands() const override
    {
        QList<CommandInfo> infos;
        for (const Row &row : Commands::table())
            infos += row.info;
        return infos;
    }

protected:
    const ArgumentReader &m_reader;

private:
    WordMatch m_match;
};

} // namespace plum
