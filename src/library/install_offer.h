#pragma once

#include <QByteArray>
#include <QString>

namespace plum {

// How a package of the store becomes an app.
enum class InstallFlag {
    Reinstall = 0, // the store's current package, in place of the app that is there
    ByName = 1, // under a name of its own
};

// A package that the user is asked about before anything is done with it.
struct InstallOffer
{
    QString keyword = {}; // of the app that it would become
    QString origin = {}; // where the package is: an address, or the path of a file
    bool replaces = false; // the app of that keyword goes

    // What the user is asked. An app that is there already may run again when the answer is yes.
    enum class Asks {
        Install,
        RunChanged, // its script is another one than was granted something
        RunAgain, // the user has taken back what it was granted
    };
    Asks asks = Asks::Install;

    // What is known of the package before it is here: by a store's signed index, or because it is a file.
    QString version = {}; // empty: not known
    qint64 size = 0; // bytes; 0: not known
    QByteArray sheet = {}; // what the app may do, as JSON text; empty: not known
    QByteArray granted
        = {}; // what the app that is there may do already, as JSON text; empty: nothing, or all
    bool fromUnsignedStore = false; // nobody vouches for what comes; such a store is on this computer
};

} // namespace plum
