#include "check/findings/line_transcript.h"

namespace plum {

int NameTable::numberOf(const QString &name)
{
    const auto known = m_numbers.constFind(name);
    if (known != m_numbers.constEnd())
        return *known;
    const int number = count();
    m_numbers.insert(name, number);
    m_names += name;
    return number;
}

} // namespace plum
