#pragma once

#include "library/library_change.h"

#include <QStringList>

#include <optional>

namespace plum {

class Paths;
class TextCodec;

// Copies the apps and settings of another program folder into this one's library. Nothing of either is lost
// or replaced; what an installed app was granted, and what its package brought, comes along with it.
class LibraryAdoption
{
public:
    struct Needs
    {
        const Paths &paths; // of the library that gets them
        TextCodec &codec;
        LibraryChange::Needs changes;
    };

    struct Outcome
    {
        QStringList apps; // "name", or "name as name-2" where another app had the keyword
        QStringList present; // apps that were here, file for file
        QStringList settings; // files
        QStringList keptSettings; // files that are here already
        QStringList failed;
    };

    explicit LibraryAdoption(const Needs &needs)
        : m(needs)
    {
    }

    // `systemFolder`: the other program folder. Nothing when it is none, or this one. No launcher may run on
    // either.
    std::optional<Outcome> adopt(const QString &systemFolder) const;

private:
    class Source;

    bool adoptApp(const QString &keyword, const Source &source, Outcome &outcome) const;
    bool adoptSettings(const QString &name, const Source &source, Outcome &outcome) const;
    QString freeKeyword(const QString &keyword) const;

    Needs m;
};

} // namespace plum
