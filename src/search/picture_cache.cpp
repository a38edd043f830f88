#include "search/picture_cache.h"

#include <QFileInfo>

#include <algorithm>

namespace plum {

namespace {

// A file that changed this lately may change again without a visible change of its time.
constexpr qint64 settledAfter = 2000; // milliseconds

} // namespace

std::shared_ptr<const PictureTemplate> PictureCache::prepared(const QString &path, Channels tolerance)
{
    const QFileInfo file(path);
    Entry entry{file.absoluteFilePath(), file.size(), file.lastModified(), tolerance, nullptr};
    const auto known = std::ranges::find_if(m_entries,
        [&](const Entry &other) { return other.path == entry.path && other.tolerance == entry.tolerance; });
    if (known != m_entries.end()) {
        if (known->fileSize == entry.fileSize && known->changed == entry.changed) {
            m_entries.splice(m_entries.begin(), m_entries, known);
            return known->picture;
        }
        m_bytes -= known->picture->cost();
        m_entries.erase(known);
    }

    const std::optional<Picture> picture = readPicture(path);
    if (!picture)
        return nullptr;
    entry.picture = std::make_shared<PictureTemplate>(*picture, tolerance);
    const auto prepared = entry.picture;
    if (entry.changed.msecsTo(QDateTime::currentDateTime()) > settledAfter)
        keep(std::move(entry));
    return prepared;
}

void PictureCache::keep(Entry entry)
{
    if (entry.picture->cost() > maxBytes)
        return;
    m_bytes += entry.picture->cost();
    m_entries.push_front(std::move(entry));
    while (m_entries.size() > maxEntries || m_bytes > maxBytes) {
        m_bytes -= m_entries.back().picture->cost();
        m_entries.pop_back();
    }
}

} // namespace plum
