#pragma once

#include "platform/wayland/connection/wayland_objects.h"

#include <QSize>

#include <span>

namespace plum {

// Pixels that this process and the compositor both see, kept from use to use.
class SharedMemory
{
public:
    explicit SharedMemory(wl_shm *shm)
        : m_shm(shm)
    {
    }
    ~SharedMemory() { release(); }
    Q_DISABLE_COPY_MOVE(SharedMemory)

    // A buffer over the memory, which grows for it; null when the system has none. `stride` is in bytes.
    WaylandOwned<wl_buffer> buffer(QSize size, int stride, uint32_t format);

    std::span<const quint32> pixels() const;

private:
    bool reserve(std::size_t bytes);
    void release();

    wl_shm *m_shm;
    WaylandOwned<wl_shm_pool> m_pool;
    void *m_memory = nullptr;
    std::size_t m_bytes = 0;
};

} // namespace plum
