#include "sheet/given_text.h"

#include <algorithm>
#include <array>

namespace plum {

namespace {

constexpr std::array<QStringView, 9> separators{u" ", u",", u", ", u";", u"; ", u"|", u" | ", u"\t", u"\r\n"};

} // namespace

bool separatesLists(const QString &separator)
{
    return separator.isEmpty() || std::ranges::find(separators, separator) != separators.end();
}

QStringList partsOfTyped(const QString &typed)
{
    QStringList parts{typed};
    for (const QStringView separator : separators) {
        if (typed.contains(separator))
            parts += typed.split(separator.toString(), Qt::SkipEmptyParts);
    }
    return parts;
}

} // namespace plum
