#pragma once

#include "desktop/support/desktop_test.h"
#include "platform/desktop_windows.h"
#include "platform/keyboard.h"
#include "platform/platform.h"
#include "platform/pointer.h"

namespace plum {

// A desktop with the ports of the real backend. What these tests say is the ports' contract, so they use
// nothing of a backend but its ports.
template <typename Base> class PortsTest : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        if (!Base::HasFatalFailure())
            platform = createPlatform(QStringLiteral("/tmp/plum"));
    }

    void TearDown() override
    {
        platform.reset();
        Base::TearDown();
    }

    std::unique_ptr<Platform> platform;
};

} // namespace plum
