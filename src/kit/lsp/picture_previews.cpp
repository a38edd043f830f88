#include "kit/lsp/picture_previews.h"

#include "check/findings/check_words.h"
#include "search/picture_file.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>

#include <algorithm>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestSide = 256; // pixels of a preview
constexpr QSize colourSize(64, 24);
constexpr std::size_t mostEntries = 32;

QString shown(const QImage &image, const QString &words)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return u"![%1](data:image/png;base64,%2)"_s.arg(words, QString::fromLatin1(bytes.toBase64()));
}

QString preview(const Picture &picture)
{
    const QImage image(reinterpret_cast<const uchar *>(picture.pixels.data()), picture.width, picture.height,
        picture.width * qsizetype(sizeof(quint32)), QImage::Format_RGB32);
    const bool isLarge = std::max(picture.width, picture.height) > longestSide;
    const QImage small = isLarge
        ? image.scaled(longestSide, longestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)
        : image;
    const QString words = CheckWords::tr("%1 x %2 pixels").arg(picture.width).arg(picture.height);
    return shown(small, words) + u"\n\n"_s + words;
}

} // namespace

QString PicturePreviews::ofPicture(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        return {};
    const auto known = std::ranges::find(m_entries, path, &Entry::path);
    if (known != m_entries.end() && known->size == file.size() && known->changed == file.lastModified()) {
        m_entries.splice(m_entries.begin(), m_entries, known);
        return m_entries.front().shown;
    }
    if (known != m_entries.end())
        m_entries.erase(known);
    const std::optional<Picture> picture = readPicture(path);
    m_entries.push_front({path, file.size(), file.lastModified(), picture ? preview(*picture) : QString()});
    if (m_entries.size() > mostEntries)
        m_entries.pop_back();
    return m_entries.front().shown;
}

QString PicturePreviews::ofColour(const QString &colour) const
{
    bool isColour = false;
    const uint value = colour.toUInt(&isColour, 16);
    if (colour.size() != 6 || !isColour)
        return {};
    QImage image(colourSize, QImage::Format_RGB32);
    image.fill(value);
    return shown(image, colour);
}

} // namespace plum::kit
