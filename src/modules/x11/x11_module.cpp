#include "platform/linux/platform_module.h"
#include "platform/x11/x11_platform.h"

namespace plum {

class X11Module final : public QObject, public PlatformModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.PlatformModule/1")
    Q_INTERFACES(plum::PlatformModule)

public:
    bool hasDesktop() override { return X11Platform::hasServer(); }

    std::unique_ptr<Platform> createPlatform(const QString &programPath) override
    {
        return std::make_unique<X11Platform>(programPath);
    }
};

} // namespace plum

#include "x11_module.moc"
