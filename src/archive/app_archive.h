#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace plum {

// What becomes of an app's folder on its way to other people, whoever packs it.
struct AppArchive
{
    QStringList files; // that are in it, sorted, with "/" between folders
    QStringList leftOut; // name and reason of each that is not, for people
    QByteArray content; // a ZIP archive
};

// Packs a folder. Links, hidden files, packages, old copies and what the system leaves in folders are left
// out. The same files give the same bytes, whenever and wherever. Nothing when that cannot be; `problem` then
// says why in one line.
std::optional<AppArchive> archiveOf(const QString &folder, QString &problem);

} // namespace plum
