#include "engine/command_call.h"

#include "engine/editions/run_observer.h"
#include "engine/text_functions.h"
#include "engine/variable_store.h"

namespace plum {

using namespace Qt::StringLiterals;

const QString CommandCall::s_none;

QString CommandCall::told(int field, QString value) const
{
    if (m_observer)
        m_observer->fieldRead(field, value);
    return value;
}

QString CommandCall::arg(int index, const QString &separator, UnknownVariable unknown) const
{
    return m_values ? m_values->single.value(index)
                    : told(index, m_reader->GetArg(m_arguments, separator, index, unknown));
}

QString CommandCall::whole(UnknownVariable unknown) const
{
    return m_values ? m_values->single.value(0)
                    : told(0, m_reader->GetArg(m_arguments, QString(), 0, unknown));
}

QStringList CommandCall::list() const
{
    if (m_values)
        return m_values->repeated;
    QStringList values;
    for (const QString &piece : split(m_arguments, u","_s)) {
        const int field = static_cast<int>(values.size());
        values += told(field, m_reader->GetArg(piece, u":"_s, 0, UnknownVariable::IsItsName));
    }
    return values;
}

void CommandCall::setVariable(const QString &name, const QString &value) const
{
    if (m_failure && edition() != Edition::One)
        return;
    m_variables.SetVar(name, value);
    if (m_observer)
        m_observer->variableSet(name, value);
}

void CommandCall::fail(const QString &reason) const
{
    if (!m_failure)
        m_failure = reason;
}

} // namespace plum
