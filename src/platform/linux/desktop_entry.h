#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace plum {

// Reads what a desktop entry (a `.desktop` file) points to: the program of its `Exec` line, or the address or
// folder of a link or directory entry (a `file:` address as a path). Nothing for bytes that name none.
std::optional<QString> readDesktopEntry(QByteArrayView bytes);

} // namespace plum
