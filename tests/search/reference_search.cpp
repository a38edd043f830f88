#include "search/reference_search.h"

namespace plum::reference {

using namespace Qt::StringLiterals;

namespace {

struct Rgb
{
    int r = 0;
    int g = 0;
    int b = 0;

    bool operator==(const Rgb &) const = default;
};

Rgb rgb(const Picture &picture, int column, int row)
{
    const quint32 pixel = picture.at(column, row);
    return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255),
        static_cast<int>(pixel & 255)};
}

QString pointText(int x, int y)
{
    return u"%1,%2"_s.arg(x).arg(y);
}

bool plainPasses(int s, int t, int d)
{
    return t - d <= s && s <= t + d;
}

bool transparentPasses(int s, int t, int d, int b)
{
    return s >= t - d && (s <= t + d || t == b);
}

struct Box
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    Rgb background;
};

Box boxOf(const Picture &picture)
{
    const int width = picture.width;
    const int height = picture.height;
    Box box;
    box.background = rgb(picture, 0, 0);
    const Rgb background = box.background;
    const auto foreground = [&](int column, int row) {
        const Rgb pixel = rgb(picture, column, row);
        return pixel.r != background.r && pixel.g != background.g && pixel.b != background.b;
    };
    const bool trimmed = background == rgb(picture, width - 1, 0) && background == rgb(picture, 0, height - 1)
        && background == rgb(picture, width - 1, height - 1);
    if (!trimmed)
        return {0, 0, width, height, {-1, 0, 0}};

    bool found = false;
    for (int row = 0; row < height && !found; ++row) {
        for (int column = 0; column < width && !found; ++column) {
            if (foreground(column, row)) {
                box.left = column;
                box.top = row;
                found = true;
            }
        }
    }
    if (!found)
        return box; // nothing is foreground: no edge is ever set
    found = false;
    for (int row = height - 1; row >= box.top && !found; --row) {
        for (int column = width - 1; column >= box.left && !found; --column) {
            if (foreground(column, row)) {
                box.bottom = row;
                found = true;
            }
        }
    }
    found = false;
    for (int column = width - 1; column >= box.top && !found; --column) {
        for (int row = height - 1; row >= box.left && !found; --row) {
            if (foreground(column, row)) {
                box.right = column;
                found = true;
            }
        }
    }
    return box;
}

} // namespace

QString FindColor(const Picture &region, Channels colour)
{
    for (int row = 0; row < region.height; ++row) {
        for (int column = 0; column < region.width; ++column) {
            if (rgb(region, column, row) == Rgb{colour.red, colour.green, colour.blue})
                return pointText(column, row);
        }
    }
    return {};
}

QString FindPic(const Picture &region, const Picture &picture, Channels tolerance)
{
    const Box box = boxOf(picture);
    const Rgb b = box.background;
    const int e = b.r == b.g ? -1 : 0;
    const bool transparent = e != b.b;
    const auto pixelPasses = [&](Rgb s, Rgb t) {
        if (transparent)
            return transparentPasses(s.r, t.r, tolerance.red, b.r)
                && transparentPasses(s.g, t.g, tolerance.green, b.g)
                && transparentPasses(s.b, t.b, tolerance.blue, b.b);
        return plainPasses(s.r, t.r, tolerance.red) && plainPasses(s.g, t.g, tolerance.green)
            && plainPasses(s.b, t.b, tolerance.blue);
    };
    const auto shiftPasses = [&](int dx, int dy) {
        for (int row = box.top; row <= box.bottom - 2; ++row) {
            for (int column = box.left; column <= box.right - 2; ++column) {
                if (!pixelPasses(rgb(region, column + dx, row + dy), rgb(picture, column, row)))
                    return false;
            }
        }
        return true;
    };
    for (int dy = 0; dy <= region.height - box.bottom - 2; ++dy) {
        for (int dx = 0; dx <= region.width - box.right - 2; ++dx) {
            if (shiftPasses(dx, dy))
                return pointText(box.left + dx, box.top + dy);
        }
    }
    return {};
}

} // namespace plum::reference
