#pragma once

#include "engine/editions/error_words.h"

#include <QString>

#include <exception>
#include <optional>

namespace plum {

// An error that a script provokes. It leaves the run loop and is caught where the run was started; units
// that suppress errors do so statement by statement with `resumeNext`.
class RunTimeError : public std::exception
{
public:
    enum Number {
        InvalidProcedureCall = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        DivisionByZero = 11,
        TypeMismatch = 13,
        FileNotFound = 53,
    };

    explicit RunTimeError(Number number);
    RunTimeError(Number number, QString description);

    // The description says why, behind a colon.
    RunTimeError(Number number, ErrorCause cause, const QString &culprit = {});

    int number() const { return m_number; }
    QString description() const { return m_description; }

    // The 0-based script line that was running; the run loop fills it in.
    std::optional<int> line() const { return m_line; }
    void setLine(int line) { m_line = line; }

    const char *what() const noexcept override { return "script run-time error"; }

private:
    Number m_number;
    QString m_description;
    std::optional<int> m_line;
};

// Runs one statement and goes on with the next when it fails: what the statement would have changed after
// the failure stays as it was.
template <typename Statement> void resumeNext(Statement &&statement)
{
    try {
        statement();
    } catch (const RunTimeError &) {
        // Suppressed by definition of the units that use this.
    }
}

} // namespace plum
