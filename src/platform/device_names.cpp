#include "platform/device_names.h"

#include <QLatin1StringView>

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
    const QStringView stem = name.left(name.indexOf(u'.') < 0 ? name.size() : name.indexOf(u'.')).trimmed();
    const auto same
        = [stem](QLatin1StringView device) { return stem.compare(device, Qt::CaseInsensitive) == 0; };
    const auto sameNumbered = [stem](QLatin1StringView device) {
        return stem.size() == device.size() + 1 && stem.startsWith(device, Qt::CaseInsensitive)
            && stem.back().isDigit();
    };
    return std::ranges::any_of(deviceNames, same) || std::ranges::any_of(numberedDeviceNames, sameNumbered);
}

} // namespace plum
