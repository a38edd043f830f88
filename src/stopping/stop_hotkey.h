#pragma once

#include "platform/hand_watch.h"

#include <QString>

namespace plum {

// "Ctrl+Alt+S" in any order and letter case; without a modifier, or in other words, it is none.
StopHotkey stopHotkeyFromText(const QString &text);

} // namespace plum
