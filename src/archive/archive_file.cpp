#include "archive/archive_file.h"

#include <QFileInfo>

#include <algorithm>

namespace plum {

bool ArchiveFile::open(const QString &systemPath)
{
    // To an administrator everything is writable; a file that nobody may write to is read-only all the same.
    constexpr auto anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const QFileInfo info(systemPath);
    if (!info.isFile() || !info.isWritable() || !(info.permissions() & anyWrite))
        return false;
    m_file.setFileName(systemPath);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    m_size = m_file.size();
    return true;
}

std::optional<std::span<const quint8>> ArchiveFile::view(qint64 position, qint64 size)
{
    if (position < 0 || size < 0 || position > m_size - size)
        return std::nullopt;
    if (position < m_windowPosition || position + size > m_windowPosition + m_windowFilled) {
        m_windowFilled = 0;
        m_window.resize(static_cast<size_t>(std::max(windowSize, size)));
        if (m_file.pos() != position && !m_file.seek(position))
            return std::nullopt;
        m_windowPosition = position;
        const qint64 wanted = std::min(static_cast<qint64>(m_window.size()), m_size - position);
        m_windowFilled = std::max<qint64>(m_file.read(reinterpret_cast<char *>(m_window.data()), wanted), 0);
        if (m_windowFilled < size)
            return std::nullopt;
    }
    return std::span<const quint8>(m_window).subspan(
        static_cast<size_t>(position - m_windowPosition), static_cast<size_t>(size));
}

} // namespace plum
