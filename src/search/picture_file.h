#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace plum {

// A picture's pixels, rows from the top, each pixel red << 16 | green << 8 | blue.
struct Picture
{
    int width = 0;
    int height = 0;
    std::vector<quint32> pixels; // width * height

    quint32 at(int column, int row) const
    {
        return pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width)
            + static_cast<std::size_t>(column)];
    }
};

// The largest picture that is read: a screenshot of an 8K screen fits, a file that claims to be enormous
// costs no memory.
inline constexpr int maxPictureSide = 32767;
inline constexpr qint64 maxPicturePixels = qint64(1) << 25;

// Decodes the first picture of a BMP, ICO, JPEG, GIF or PNG file, told apart by their content. Transparency
// is laid over black. Nothing when the bytes are no such picture, are damaged or claim too large a picture.
std::optional<Picture> decodePicture(const QByteArray &bytes);

// As above, for a file. `path` is the system's own.
std::optional<Picture> readPicture(const QString &path);

} // namespace plum
