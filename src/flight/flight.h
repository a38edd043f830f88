#pragma once

#include "flight/flight_camera.h"
#include "flight/flight_platform.h"
#include "flight/flight_recorder.h"

namespace plum {

// A recorder with the ports that tell it what runs do.
struct Flight
{
    Flight(Platform &innerPlatform, Shell &innerShell)
        : camera(innerPlatform)
        , platform(innerPlatform, recorder)
        , shell(innerShell, recorder)
    {
    }

    // Pictures are taken of the runs at whose beginning this says so.
    void takePicturesWhere(std::function<bool()> areWanted)
    {
        recorder.setCamera(camera, std::move(areWanted));
    }

    FlightCamera camera;
    FlightRecorder recorder;
    FlightPlatform platform;
    RecordedShell shell;
};

} // namespace plum
