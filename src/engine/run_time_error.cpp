#include "engine/run_time_error.h"

#include <QCoreApplication>

namespace plum {

namespace {

struct Descriptions
{
    Q_DECLARE_TR_FUNCTIONS(plum::RunTimeError)
};

QString classicDescription(RunTimeError::Number number)
{
    switch (number) {
    case RunTimeError::InvalidProcedureCall:
        return Descriptions::tr("Invalid procedure call or argument");
    case RunTimeError::Overflow:
        return Descriptions::tr("Overflow");
    case RunTimeError::SubscriptOutOfRange:
        return Descriptions::tr("Subscript out of range");
    case RunTimeError::DivisionByZero:
        return Descriptions::tr("Division by zero");
    case RunTimeError::TypeMismatch:
        return Descriptions::tr("Type mismatch");
    case RunTimeError::FileNotFound:
        return Descriptions::tr("File not found");
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
