#include "platform/device_names.h"

#include <QString>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array deviceNames{"con"_L1, "prn"_L1, "aux"_L1, "nul"_L1, "conin$"_L1, "conout$"_L1};
constexpr std::array numberedDeviceNames{"com"_L1, "lpt"_L1};

} // namespace

bool isDeviceName(QStringView name)
{
    const qsizetype dot = name.indexOf(u'.');
    const QStringView stem = name.left(dot < 0 ? name.size() : dot).trimmed();
    const auto same
        = [stem](QLatin1StringView device) { return stem.compare(device, Qt::CaseInsensitive) == 0; };
    const auto sameNumbered = [stem](QLatin1StringView device) {
        return stem.size() == device.size() + 1 && stem.startsWith(device, Qt::CaseInsensitive)
            && stem.back().isDigit();
    };
    return std::ranges::any_of(deviceNames, same) || std::ranges::any_of(numberedDeviceNames, sameNumbered);
}

} // namespace plum
