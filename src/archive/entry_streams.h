#pragma once

#include "archive/archive_file.h"
#include "archive/inflate.h"

namespace plum {

// The data of one entry as the decoder's input.
class EntryInput final : public InflateInput
{
public:
    EntryInput(ArchiveFile &archive, qint64 position, qint64 size)
        : m_archive(archive)
        , m_next(position)
        , m_end(position + size)
    {
    }

    std::optional<std::span<const quint8>> more(std::span<const quint8> unread) override
    {
        const qint64 start = m_next - static_cast<qint64>(unread.size());
        m_next = std::min(start + ArchiveFile::windowSize, m_end);
        return m_archive.view(start, m_next - start);
    }

private:
    ArchiveFile &m_archive;
    qint64 m_next; // position in the archive of the first byte not handed out
    const qint64 m_end;
};

// The file of one entry as the decoder's output.
class EntryOutput final : public InflateOutput
{
public:
    static constexpr size_t windowSize = size_t(384) * 1024;

    EntryOutput(QFile &file, std::span<quint8> window)
        : m_file(file)
        , m_window(window)
    {
    }

    std::span<quint8> window() override { return m_window; }

    bool take(std::span<const quint8> bytes) override
    {
        const auto size = static_cast<qint64>(bytes.size());
        return m_file.write(reinterpret_cast<const char *>(bytes.data()), size) == size;
    }

private:
    QFile &m_file;
    std::span<quint8> m_window;
};

} // namespace plum
