#pragma once

#include <QStringView>

namespace plum {

// Whether a file name stands for a device where names are interpreted (see `Paths`): "con", "nul.txt",
// "COM1".
bool isDeviceName(QStringView name);

} // namespace plum
