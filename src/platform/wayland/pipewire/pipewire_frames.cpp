#include "platform/wayland/pipewire/pipewire_frames.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <mutex>
#include <spa/param/video/format-utils.h>

namespace plum {

namespace {

constexpr quint32 largest = 1 << 15; // pixels on a side

// The loop's lock, which its thread holds while it calls back.
class Locked
{
public:
    explicit Locked(pw_thread_loop *loop)
        : m_loop(loop)
    {
        pw_thread_loop_lock(m_loop);
    }
    ~Locked() { pw_thread_loop_unlock(m_loop); }
    Q_DISABLE_COPY_MOVE(Locked)

private:
    pw_thread_loop *m_loop;
};

const spa_pod *wantedFormat(spa_pod_builder &builder)
{
    const spa_rectangle usual{1920, 1080};
    const spa_rectangle least{1, 1};
    const spa_rectangle most{largest, largest};
    const spa_fraction any{0, 1};
    const spa_fraction slow{0, 1};
    const spa_fraction fast{1000, 1};
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(&builder, SPA_TYPE_OBJECT_Format,
        SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video), SPA_FORMAT_mediaSubtype,
        SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), SPA_FORMAT_VIDEO_format,
        SPA_POD_CHOICE_ENUM_Id(3, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA),
        SPA_FORMAT_VIDEO_size, SPA_POD_CHOICE_RANGE_Rectangle(&usual, &least, &most),
        SPA_FORMAT_VIDEO_framerate, SPA_POD_CHOICE_RANGE_Fraction(&any, &slow, &fast)));
}

// In memory that this process reads.
const spa_pod *wantedBuffers(spa_pod_builder &builder)
{
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(&builder, SPA_TYPE_OBJECT_ParamBuffers,
        SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_dataType,
        SPA_POD_CHOICE_FLAGS_Int(1 << SPA_DATA_MemFd | 1 << SPA_DATA_MemPtr)));
}

} // namespace

const pw_stream_events PipewireFrames::events = [] {
    pw_stream_events table{};
    table.version = PW_VERSION_STREAM_EVENTS;
    table.state_changed = [](void *frames, pw_stream_state, pw_stream_state, const char *) {
        pw_thread_loop_signal(static_cast<PipewireFrames *>(frames)->m_loop.get(), false);
    };
    table.param_changed = [](void *frames, quint32 id, const spa_pod *value) {
        if (id == SPA_PARAM_Format && value)
            static_cast<PipewireFrames *>(frames)->takeFormat(value);
    };
    // The memory of a frame that is held goes.
    table.remove_buffer = [](void *frames, pw_buffer *buffer) {
        auto *self = static_cast<PipewireFrames *>(frames);
        if (self->m_held == buffer)
            self->m_held = nullptr;
    };
    table.process = [](void *frames) { static_cast<PipewireFrames *>(frames)->takeFrame(); };
    return table;
}();

PipewireFrames::PipewireFrames(quint32 number)
{
    static std::once_flag once;
    std::call_once(once, [] { pw_init(nullptr, nullptr); });
    m_loop.reset(pw_thread_loop_new("plum-frames", nullptr));
    if (!m_loop || pw_thread_loop_start(m_loop.get()) != 0)
        return;
    const Locked locked(m_loop.get());
    m_stream.reset(pw_stream_new_simple(pw_thread_loop_get_loop(m_loop.get()), "Plum",
        pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture", PW_KEY_MEDIA_ROLE,
            "Screen", nullptr),
        &events, this));
    if (!m_stream)
        return;
    std::array<quint8, 1024> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    const spa_pod *format = wantedFormat(builder);
    constexpr auto flags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT
        | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_DONT_RECONNECT | PW_STREAM_FLAG_INACTIVE);
    if (pw_stream_connect(m_stream.get(), PW_DIRECTION_INPUT, number, flags, &format, 1) != 0)
        m_stream.reset();
}

PipewireFrames::~PipewireFrames()
{
    if (m_loop)
        pw_thread_loop_stop(m_loop.get());
}

void PipewireFrames::takeFormat(const spa_pod *format)
{
    spa_video_info_raw video{};
    if (spa_format_video_raw_parse(format, &video) < 0)
        return;
    m_size = {static_cast<int>(video.size.width), static_cast<int>(video.size.height)};
    std::array<quint8, 256> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    const spa_pod *buffers = wantedBuffers(builder);
    pw_stream_update_params(m_stream.get(), &buffers, 1);
}

void PipewireFrames::giveBack()
{
    if (m_held)
        pw_stream_queue_buffer(m_stream.get(), std::exchange(m_held, nullptr));
}

void PipewireFrames::takeFrame()
{
    while (pw_buffer *buffer = pw_stream_dequeue_buffer(m_stream.get())) {
        const spa_data &data = buffer->buffer->datas[0];
        const bool isPicture
            = data.data && data.chunk->size > 0 && !(data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED);
        if (m_isWanted && isPicture) {
            giveBack();
            m_held = buffer;
        } else {
            pw_stream_queue_buffer(m_stream.get(), buffer);
        }
    }
    if (m_held)
        pw_thread_loop_signal(m_loop.get(), false);
}

std::optional<Frame> PipewireFrames::next(int milliseconds)
{
    const Locked locked(m_loop.get());
    const QDeadlineTimer deadline(milliseconds);
    giveBack();
    m_isWanted = true;
    pw_stream_set_active(m_stream.get(), true);
    while (!m_held && !deadline.hasExpired()
        && pw_stream_get_state(m_stream.get(), nullptr) > PW_STREAM_STATE_UNCONNECTED) {
        timespec until{};
        pw_thread_loop_get_time(m_loop.get(), &until, deadline.remainingTimeNSecs());
        pw_thread_loop_timed_wait_full(m_loop.get(), &until);
    }
    m_isWanted = false;
    pw_stream_set_active(m_stream.get(), false);
    if (!m_held)
        return {};
    const spa_data &data = m_held->buffer->datas[0];
    const auto stride = static_cast<std::size_t>(data.chunk->stride);
    const auto *first = static_cast<const char *>(data.data) + data.chunk->offset;
    const auto rowLength = stride / sizeof(quint32);
    return Frame{m_size, rowLength,
        {reinterpret_cast<const quint32 *>(first), rowLength * static_cast<std::size_t>(m_size.height())}};
}

} // namespace plum
