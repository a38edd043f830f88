#pragma once

#include <QByteArray>

namespace plum {

// Hands `utf8` to a process of its own that owns the clipboard from now on, and waits, one second at most,
// until it does. Returns false when that process could not be started or gave up at once.
bool keepClipboardText(const QByteArray &utf8);

} // namespace plum
