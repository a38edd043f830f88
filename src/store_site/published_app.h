#pragma once

#include "archive/app_archive.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace plum {

// One app as the store shows it: what is in its folder.
struct PublishedApp
{
    QString name; // the folder's name, the app's keyword
    QString title;
    QString summary;
    QString category;
    QString version; // empty: the next number
    int edition = 1; // of the language: the highest that its scripts ask for
    QByteArray sheet; // what it may do, as JSON text
    QStringList sheetSentences; // the same for people
    QString guide; // a text or an address; may be empty
    QString script;
    QByteArray icon; // an SVG or PNG picture; empty when the app has none
    QString iconFile; // its file name
    AppArchive package;
    QByteArray checksum; // SHA-256 of the archive

    bool guideIsAddress() const;
};

// Reads the app in `folder` and packs it. Nothing when the folder is no app that can be published; `problem`
// then says why in one line. `about.json`, if there is one, gives "title", "summary",
// "category" and "version". The same files give the same package, whatever their times.
std::optional<PublishedApp> readApp(const QString &folder, QString &problem);

} // namespace plum
