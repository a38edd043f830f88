#include "search/picture_file.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <array>

namespace plum {

namespace {

constexpr std::array<QByteArrayView, 6> formats{"bmp", "ico", "cur", "jpeg", "gif", "png"};

bool isAcceptable(QSize size)
{
    return !size.isEmpty() && size.width() <= maxPictureSide && size.height() <= maxPictureSide
        && qint64(size.width()) * size.height() <= maxPicturePixels;
}

QImage withoutTransparency(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return image.convertToFormat(QImage::Format_RGB32);
    QImage opaque(image.size(), QImage::Format_RGB32);
    if (opaque.isNull())
        return {};
    opaque.fill(Qt::black);
    QPainter painter(&opaque);
    painter.drawImage(0, 0, image);
    return opaque;
}

std::optional<Picture> decode(QIODevice &device)
{
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (std::ranges::find(formats, QByteArrayView(format)) == formats.end() || !isAcceptable(reader.size()))
        return {};
    const QImage decoded = reader.read();
    if (!isAcceptable(decoded.size()))
        return {};
    QImage image = withoutTransparency(decoded);
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(1);

    Picture picture{image.width(), image.height(), {}};
    picture.pixels.reserve(
        static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int row = 0; row < image.height(); ++row) {
        const auto *line = reinterpret_cast<const quint32 *>(image.constScanLine(row));
        std::transform(line, line + image.width(), std::back_inserter(picture.pixels),
            [](quint32 pixel) { return pixel & 0xffffff; });
    }
    return picture;
}

} // namespace

std::optional<Picture> decodePicture(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return decode(buffer);
}

std::optional<Picture> readPicture(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return decode(file);
}

} // namespace plum
