#pragma once

#include <QString>

namespace plum {

class KeyFolder;

// How long what is signed is good, in days.
struct SignedDays
{
    int timestamp = 7;
    int index = 90;
};

// Signs what is in the store's folder: the lists of keys go there, an index where something is new or the old
// one ends soon, and a timestamp. The same store, keys and moment give the same files. False with a
// `problem`.
bool signStore(const QString &store, const KeyFolder &keys, const SignedDays &days, QString &problem);

// Takes a version of a package back, with the newest one where `version` is empty. It stands in the index
// until the store is signed again.
bool takeBack(const QString &store, const QString &name, const QString &version, const QString &reason,
    QString &problem);

} // namespace plum
