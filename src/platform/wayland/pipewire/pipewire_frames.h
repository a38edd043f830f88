#pragma once

#include "platform/wayland/wire/frame_stream.h"

#include <pipewire/pipewire.h>

namespace plum {

struct PipewireDeleter
{
    void operator()(pw_stream *stream) const { pw_stream_destroy(stream); }
    void operator()(pw_thread_loop *loop) const { pw_thread_loop_destroy(loop); }
};

// A stream of PipeWire's. It rests while nobody asks for a frame: the compositor hands over one when it goes
// on, and need make none meanwhile.
class PipewireFrames final : public FrameStream
{
public:
    explicit PipewireFrames(quint32 number);
    ~PipewireFrames() override;
    Q_DISABLE_COPY_MOVE(PipewireFrames)

    bool isOpen() const { return m_stream != nullptr; }

    std::optional<Frame> next(int milliseconds) override;

private:
    void takeFormat(const spa_pod *format);
    void takeFrame();
    void giveBack();

    static const pw_stream_events events;

    std::unique_ptr<pw_thread_loop, PipewireDeleter> m_loop;
    std::unique_ptr<pw_stream, PipewireDeleter> m_stream;
    spa_hook m_listener{};
    // What follows belongs to the loop's thread, or to whoever holds the loop's lock.
    QSize m_size;
    pw_buffer *m_held = nullptr; // the frame that was handed out last
    bool m_isWanted = false;
};

} // namespace plum
