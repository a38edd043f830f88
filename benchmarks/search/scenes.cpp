#include "scenes.h"

#include <QElapsedTimer>

#include <random>

namespace plum::scenes {

namespace {

constexpr quint32 grey = 0x808080;
constexpr quint32 wrong = 0xff8080;

std::size_t index(const Picture &picture, int column, int row)
{
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(picture.width)
        + static_cast<std::size_t>(column);
}

Picture flat(QSize size, quint32 pixel)
{
    const std::size_t count
        = static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height());
    return {size.width(), size.height(), std::vector<quint32>(count, pixel)};
}

Picture cut(const Picture &screen, int x, int y, QSize size, bool upsideDown)
{
    Picture piece = flat(size, 0);
    for (int row = 0; row < size.height(); ++row) {
        const int from = upsideDown ? size.height() - 1 - row : row;
        for (int column = 0; column < size.width(); ++column)
            piece.pixels[index(piece, column, row)] = screen.at(x + column, y + from);
    }
    return piece;
}

// A corner that differs keeps the search rules from trimming the picture. It is never compared itself.
void keepWhole(Picture &picture)
{
    picture.pixels[index(picture, picture.width - 1, 0)] ^= 0xffffff;
}

} // namespace

std::optional<Scene> foundNearTheEnd(const Picture &screen, QSize size, const Finder &find)
{
    for (int y = screen.height - size.height() - 4; y > screen.height * 9 / 10 - size.height(); y -= 3) {
        for (int x = screen.width - size.width() - 4; x >= 0; x -= size.width() / 2 + 7) {
            const Picture picture = cut(screen, x, y, size, false);
            const std::optional<Position> found = find(screen, picture);
            if (found && found->y >= screen.height * 9 / 10 - size.height())
                return Scene{screen, picture};
        }
    }
    return {};
}

std::optional<Scene> notFound(const Picture &screen, QSize size, const Finder &find)
{
    constexpr int pictures = 24;
    constexpr int attempts = 400;
    std::mt19937 random(11);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    Picture slowest;
    qint64 longest = 0;
    for (int attempt = 0, absent = 0; attempt < attempts && absent < pictures; ++attempt) {
        const int x = below(screen.width - size.width());
        const Picture picture = cut(screen, x, below(screen.height - size.height()), size, true);
        if (find(screen, picture))
            continue;
        ++absent;
        QElapsedTimer elapsed;
        elapsed.start();
        find(screen, picture);
        if (elapsed.nsecsElapsed() > longest) {
            longest = elapsed.nsecsElapsed();
            slowest = picture;
        }
    }
    if (longest == 0)
        return {};
    return Scene{screen, slowest};
}

Scene oneWrongPixel(QSize screen, QSize picture)
{
    Scene scene{flat(screen, grey), flat(picture, grey)};
    scene.picture.pixels[index(scene.picture, picture.width() - 2, picture.height() - 2)] = wrong;
    keepWhole(scene.picture);
    return scene;
}

Scene spoiltScreen(QSize screen, QSize picture)
{
    Scene scene{flat(screen, grey), flat(picture, grey)};
    keepWhole(scene.picture);
    // One wrong pixel somewhere in each cell; every place of the picture covers some whole cells.
    std::mt19937 random(7);
    const int width = picture.width() * 2 / 5;
    const int height = picture.height() * 2 / 5;
    for (int y = 0; y < screen.height(); y += height) {
        for (int x = 0; x < screen.width(); x += width) {
            const int column = x + static_cast<int>(random() % static_cast<unsigned>(width));
            const int row = y + static_cast<int>(random() % static_cast<unsigned>(height));
            if (column < screen.width() && row < screen.height())
                scene.screen.pixels[index(scene.screen, column, row)] = wrong;
        }
    }
    return scene;
}

Scene brokenStripes(QSize screen, QSize picture)
{
    const auto stripes = [](QSize size) {
        Picture striped = flat(size, 0);
        for (int row = 0; row < size.height(); ++row) {
            for (int column = 0; column < size.width(); ++column)
                striped.pixels[index(striped, column, row)]
                    = (column + row) / 2 % 2 == 0 ? 0x202020 : 0xe0e0e0;
        }
        return striped;
    };
    Scene scene{stripes(screen), stripes(picture)};
    scene.picture.pixels[index(scene.picture, picture.width() / 2, picture.height() / 2)] ^= 0xffffff;
    keepWhole(scene.picture);
    return scene;
}

} // namespace plum::scenes
