#pragma once

#include "engine/argument_reader.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace plum {

class RunObserver;
class VariableStore;

// The editions of the script language. A script gets the first unless it asks for another.
enum class Edition {
    One = 1,
    Two = 2,
};

// What a run does when a routine has returned.
enum class Next {
    GoOn,
    Suspend, // the run rests until the user has closed what is shown
    SuspendForAnswer, // the run rests until the user has answered; without an answer edition 2 fails
};

// The fields of a line of edition 2, evaluated: one value for each field of the row, and the values of the
// field that repeats. A field that was left out is the empty text.
struct FieldValues
{
    QStringList single;
    QStringList repeated;
};

// One command line on its way to a routine. The fields come from the line's text, as edition 1 reads it, or
// are values already, as edition 2 works them out before it calls.
class CommandCall
{
public:
    // A line of edition 1: `arguments` is everything after the head. All three outlive the call, as does
    // `observer`, who hears of fields and results; null for nobody.
    CommandCall(const ArgumentReader &reader, const QString &command, const QString &arguments,
        RunObserver *observer = nullptr)
        : m_reader(&reader)
        , m_command(command)
        , m_arguments(arguments)
        , m_variables(reader.variables())
        , m_observer(observer)
    {
    }

    // A line of edition 2, which reads and stores the run's own `variables`. `observer` hears of results.
    CommandCall(const QString &command, const FieldValues &values, VariableStore &variables,
        RunObserver *observer = nullptr)
        : m_command(command)
        , m_values(&values)
        , m_variables(variables)
        , m_observer(observer)
    {
    }

    Edition edition() const { return m_reader ? Edition::One : Edition::Two; }

    // The word after the namespace, as the script wrote it.
    const QString &command() const { return m_command; }

    // Everything after the head, unevaluated; empty in edition 2, where lines are no text any more.
    const QString &arguments() const { return m_arguments; }

    // Field `index` (from 0). Edition 1 reads it anew at each call, so the order of the calls is the order in
    // which variables are looked up; `separator` and `unknown` are edition 1's alone.
    QString arg(int index, const QString &separator = QStringLiteral(","),
        UnknownVariable unknown = UnknownVariable::IsItsName) const;

    // The whole argument text as one field.
    QString whole(UnknownVariable unknown = UnknownVariable::IsItsName) const;

    // The values of the field that repeats. Edition 1 has such a field in first place only, as the list of
    // all pieces of the line.
    QStringList list() const;

    // Stores a result. A step that has failed stores nothing in edition 2.
    void setVariable(const QString &name, const QString &value) const;

    // The variables of the run: those of the part that is running, in edition 2.
    VariableStore &variables() const { return m_variables; }

    // Says that the step failed. Edition 1 goes on as if nothing had happened. In edition 2 it is the run's
    // error: `reason` is one sentence without the line, which the run adds. The first reason counts.
    void fail(const QString &reason) const;

    bool hasFailed() const { return m_failure.has_value(); }
    const QString &failure() const { return *m_failure; } // only when it has failed

private:
    QString told(int field, QString value) const;

    const ArgumentReader *m_reader = nullptr;
    const QString &m_command;
    const QString &m_arguments = s_none;
    const FieldValues *m_values = nullptr;
    VariableStore &m_variables;
    RunObserver *m_observer = nullptr;
    mutable std::optional<QString> m_failure;

    static const QString s_none;
};

} // namespace plum
