#pragma once

#include <QDeadlineTimer>

namespace plum {

// The stamp of an event that this program makes, in milliseconds of one clock; it runs over.
inline quint32 eventTime()
{
    return static_cast<quint32>(QDeadlineTimer::current(Qt::PreciseTimer).deadline());
}

} // namespace plum
