#pragma once

#include "sheet/sheet.h"

#include <QStringList>

namespace plum {

enum class Sentences {
    Whole, // says too whom the app does not contact
    Growth, // only what is there
};

// What a sheet says, as sentences that a person reads: "Reads notes.txt in its own folder." Texts of scripts
// in them are shortened and hold no characters that would change how the rest looks.
QStringList sentences(const Sheet &sheet, Sentences which = Sentences::Whole);

// The objects of one effect, for a sentence: "notes.txt in its own folder and what you type".
QString objectText(Effect effect, const QString &object);

// The sentence of an effect on one object, as something that was not allowed: "reading /etc/passwd".
QString deedText(Effect effect, const QString &what);

} // namespace plum
