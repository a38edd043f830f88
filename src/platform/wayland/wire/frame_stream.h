#pragma once

#include <QSize>
#include <QtPlugin>

#include <memory>
#include <optional>
#include <span>

namespace plum {

// One picture of a stream: rows from the top, each pixel four bytes blue, green, red, and a fourth of no
// meaning.
struct Frame
{
    QSize size;
    std::size_t rowLength = 0; // pixels, those behind the end of a row among them
    std::span<const quint32> pixels; // valid until the next frame is asked for
};

// The picture of a desktop as its compositor hands it to programs.
class FrameStream
{
public:
    virtual ~FrameStream() = default;

    // A picture that was made after this was asked for; nothing when there is none within `milliseconds`. The
    // stream rests meanwhile.
    virtual std::optional<Frame> next(int milliseconds) = 0;
};

// What the module `plum-pipewire` exports.
class FrameStreamModule
{
public:
    virtual ~FrameStreamModule() = default;

    // `number` is PipeWire's for the stream. Null when PipeWire does not answer.
    virtual std::unique_ptr<FrameStream> open(quint32 number) = 0;
};

} // namespace plum

Q_DECLARE_INTERFACE(plum::FrameStreamModule, "plum.FrameStreamModule/1")
