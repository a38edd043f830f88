#pragma once

#include "search/picture_template.h"

#include <QDateTime>
#include <QString>

#include <list>
#include <memory>

namespace plum {

// Pictures made ready for searching, kept while their files stay as they are. Bounded in number and memory;
// the one that was not used for the longest time goes first.
class PictureCache
{
public:
    static constexpr std::size_t maxEntries = 64;
    static constexpr std::size_t maxBytes = std::size_t(64) << 20;

    // The picture in the file at `path`, the system's own; null when the file cannot be read as a picture.
    std::shared_ptr<const PictureTemplate> prepared(const QString &path, Channels tolerance);

    std::size_t size() const { return m_entries.size(); }

private:
    struct Entry
    {
        QString path;
        qint64 fileSize = 0;
        QDateTime changed;
        Channels tolerance;
        std::shared_ptr<const PictureTemplate> picture;
    };

    void keep(Entry entry);

    std::list<Entry> m_entries; // the last used first
    std::size_t m_bytes = 0;
};

} // namespace plum
