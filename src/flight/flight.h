#pragma once

#include "flight/flight_platform.h"
#include "flight/flight_recorder.h"

namespace plum {

// A recorder with the ports that tell it what runs do.
struct Flight
{
    Flight(Platform &innerPlatform, Shell &innerShell)
        : platform(innerPlatform, recorder)
        , shell(innerShell, recorder)
    {
    }

    FlightRecorder recorder;
    FlightPlatform platform;
    RecordedShell shell;
};

} // namespace plum
