#include "platform/wayland/connection/shared_memory.h"

#include <limits>
#include <sys/mman.h>
#include <unistd.h>

namespace plum {

bool SharedMemory::reserve(std::size_t bytes)
{
    if (bytes <= m_bytes)
        return true;
    release();
    if (!m_shm || bytes > static_cast<std::size_t>(std::numeric_limits<int32_t>::max()))
        return false;
    const int file = memfd_create("plum-pixels", MFD_CLOEXEC);
    if (file < 0)
        return false;
    if (ftruncate(file, static_cast<off_t>(bytes)) == 0) {
        void *memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (memory != MAP_FAILED) {
            m_memory = memory;
            m_bytes = bytes;
            m_pool.reset(wl_shm_create_pool(m_shm, file, static_cast<int32_t>(bytes)));
        }
    }
    close(file);
    return m_memory != nullptr;
}

void SharedMemory::release()
{
    m_pool.reset();
    if (m_memory)
        munmap(m_memory, m_bytes);
    m_memory = nullptr;
    m_bytes = 0;
}

WaylandOwned<wl_buffer> SharedMemory::buffer(QSize size, int stride, uint32_t format)
{
    if (size.isEmpty() || stride < size.width()
        || !reserve(static_cast<std::size_t>(stride) * static_cast<std::size_t>(size.height())))
        return nullptr;
    return WaylandOwned<wl_buffer>(
        wl_shm_pool_create_buffer(m_pool.get(), 0, size.width(), size.height(), stride, format));
}

std::span<const quint32> SharedMemory::pixels() const
{
    return {static_cast<const quint32 *>(m_memory), m_bytes / sizeof(quint32)};
}

} // namespace plum
