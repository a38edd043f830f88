#pragma once

#include <QDateTime>
#include <QString>

#include <list>

namespace plum::kit {

// Small copies of pictures and colours for what editors show beside a line, as addresses that hold the
// picture itself. A picture is decoded once as long as its file stays as it is.
class PicturePreviews
{
public:
    // Markdown that shows the picture in a file and says its size; empty when the file is no picture that
    // scripts can search for.
    QString ofPicture(const QString &path);

    // The same for a colour, RRGGBB; empty when it is none.
    QString ofColour(const QString &colour) const;

private:
    struct Entry
    {
        QString path;
        qint64 size = 0;
        QDateTime changed;
        QString shown;
    };

    std::list<Entry> m_entries; // the last used first
};

} // namespace plum::kit
