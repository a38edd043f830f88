#pragma once

#include "signing/trusted_store.h"

#include <QString>

namespace plum {

// What was believed of a signed store, kept in a folder of its own: without it an old index would look as
// good as a new one.
TrustedStore::Files rememberedFiles(const QString &systemFolder);

// Writes what is not there yet, each file as a whole. A disk that takes nothing is no reason to believe less.
void rememberFiles(const QString &systemFolder, const TrustedStore::Files &files);

} // namespace plum
