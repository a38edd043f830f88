#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace plum {

// Replaces the file at `systemPath` by `content` so that a crash, a full disk or a read-only folder leaves
// the old file whole: a temporary file beside it is renamed into place. Missing folders above it are made.
// Returns whether the file now has the new content.
bool replaceFile(const QString &systemPath, const QByteArray &content);

// The temporary files in a folder that processes left behind which were ended while they replaced a file.
// Those of the last minute may be in use.
QStringList unfinishedReplacements(const QString &systemFolder);

} // namespace plum
