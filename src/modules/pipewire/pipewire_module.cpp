#include "platform/wayland/pipewire/pipewire_frames.h"

#include <QObject>

namespace plum {

class PipewireModule final : public QObject, public FrameStreamModule
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "plum.FrameStreamModule/1")
    Q_INTERFACES(plum::FrameStreamModule)

public:
    std::unique_ptr<FrameStream> open(quint32 number) override
    {
        auto frames = std::make_unique<PipewireFrames>(number);
        return frames->isOpen() ? std::move(frames) : nullptr;
    }
};

} // namespace plum

#include "pipewire_module.moc"
