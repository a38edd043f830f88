#include "engine/run_time_error.h"

namespace plum {

namespace {

QString classicDescription(RunTimeError::Number number)
{
    switch (number) {
    case RunTimeError::InvalidProcedureCall:
        return QStringLiteral("Invalid procedure call or argument");
    case RunTimeError::Overflow:
        return QStringLiteral("Overflow");
    case RunTimeError::SubscriptOutOfRange:
        return QStringLiteral("Subscript out of range");
    case RunTimeError::DivisionByZero:
        return QStringLiteral("Division by zero");
    case RunTimeError::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case RunTimeError::FileNotFound:
        return QStringLiteral("File not found");
    }
    Q_UNREACHABLE();
}

} // namespace

RunTimeError::RunTimeError(Number number)
    : RunTimeError(number, classicDescription(number))
{
}

RunTimeError::RunTimeError(Number number, ErrorCause cause, const QString &culprit)
    : RunTimeError(number, classicDescription(number) + QStringLiteral(": ") + errorWords(cause, culprit))
{
}

RunTimeError::RunTimeError(Number number, QString description)
    : m_number(number)
    , m_description(std::move(description))
{
}

} // namespace plum
