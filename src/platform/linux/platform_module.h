#pragma once

#include <QtPlugin>

#include <memory>

namespace plum {

class Platform;

// What the modules `plum-x11` and `plum-wayland` export: a backend for one way to a desktop.
class PlatformModule
{
public:
    virtual ~PlatformModule() = default;

    // Whether there is a desktop of this kind now. Needs no application object.
    virtual bool hasDesktop() = 0;

    // Without a desktop whatever needs one does nothing.
    virtual std::unique_ptr<Platform> createPlatform(const QString &programPath) = 0;
};

} // namespace plum

Q_DECLARE_INTERFACE(plum::PlatformModule, "plum.PlatformModule/1")
