#include "download/byte_size_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

QString byteSizeText(double bytes)
{
    static constexpr std::array units{"KB"_L1, "MB"_L1, "GB"_L1, "TB"_L1, "PB"_L1, "EB"_L1};

    bytes = std::max(bytes, 0.0);
    if (bytes < 1024)
        return QString::number(std::floor(bytes), 'f', 0) + " bytes"_L1;
    size_t unit = 0;
    double value = bytes / 1024;
    while (value >= 1000 && unit + 1 < units.size()) {
        value /= 1024;
        ++unit;
    }
    const int decimals = value >= 100 ? 0 : value >= 10 ? 1 : 2;
    const double scale = std::pow(10, decimals);
    return QString::number(std::floor(value * scale) / scale, 'f', decimals) + u' ' + units[unit];
}

} // namespace plum
