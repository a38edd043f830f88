#pragma once

#include "archive/app_archive.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace plum::kit {

// What becomes of an app's folder on its way to other people.
struct AppPackage
{
    QString keyword; // the folder's name
    AppArchive archive;
    QStringList scripts; // those of its files that are scripts
};

// Packs the app in `folder`. The same files give the same bytes, whenever and wherever. Nothing when it is no
// app that can be packed; `problem` then says why.
std::optional<AppPackage> packApp(const QString &folder, QString &problem);

// Makes the folder of a new app in `parent`, with a script that runs. Returns the script's path; empty when
// it cannot be made, and `problem` then says why.
QString makeApp(const QString &parent, const QString &keyword, QString &problem);

} // namespace plum::kit
