#include "platform/linux/platform_module.h"
#include "platform/wayland/wayland_platform.h"

namespace plum {

class WaylandModule final : public QObject, public PlatformModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.PlatformModule/1")
    Q_INTERFACES(plum::PlatformModule)

public:
    bool hasDesktop() override { return WaylandPlatform::hasCompositor(); }

    std::unique_ptr<Platform> createPlatform(const QString &programPath) override
    {
        return std::make_unique<WaylandPlatform>(programPath);
    }
};

} // namespace plum

#include "wayland_module.moc"
