#pragma once

#include "engine/script_vocabulary.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace plum::test {

// A script in which one token of the syntax is not what it was.
struct Mutant
{
    QStringList script;
    int line = 0; // of the change, from 0
    QString what; // "quote deleted", ...
};

// All mutants of a script without mistakes by one token: a namespace, command, choice, key, reference, name,
// separator, brace or quote deleted, doubled, exchanged with the token behind it, or in the other letter
// case; a digit of a number, point, region, colour or name replaced by the letter that looks like it. Changes
// inside a text or path, which still fits its field, are none.
QList<Mutant> mutantsOf(const QStringList &script, const ScriptVocabulary &vocabulary);

} // namespace plum::test
