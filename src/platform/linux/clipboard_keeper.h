#pragma once

#include <QByteArray>
#include <QString>

namespace plum {

// Hands `utf8` to `keeper`, a program beside this one that owns the clipboard from now on, and waits, ten
// seconds at most, until it does. Returns false when that process could not be started or gave up at once.
bool keepClipboardText(const QString &keeper, const QByteArray &utf8);

} // namespace plum
