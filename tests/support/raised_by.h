#pragma once

#include "engine/run_time_error.h"

namespace plum::recording {

// The number of the run-time error that `statement` raises; 0 when it raises none.
template <typename Statement> int raisedBy(Statement &&statement)
{
    try {
        statement();
    } catch (const RunTimeError &error) {
        return error.number();
    }
    return 0;
}

} // namespace plum::recording
