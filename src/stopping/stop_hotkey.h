#pragma once

#include "platform/hand_watch.h"

#include <QString>

namespace plum {

class Platform;

// "Ctrl+Alt+S" in any order and letter case; without a modifier, or in other words, it is none.
StopHotkey stopHotkeyFromText(const QString &text);

// What `config\load\options.ini` says behind `hotkey=` in its section `[stop]`.
StopHotkey stopHotkeyOf(Platform &platform);

} // namespace plum
