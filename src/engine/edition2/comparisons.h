#pragma once

#include "engine/edition2/own_words.h"

#include <QString>

#include <optional>

namespace plum::edition2 {

// Whether the comparison holds. Two values that both read as decimal numbers compare as numbers, however many
// digits they have, else as exact text. Nothing where `Above` or `Below` meets anything but numbers.
std::optional<bool> holds(const QString &value, Comparison comparison, const QString &other);

// The order of two decimal numbers: below 0, 0 or above 0. Both are numbers.
int compareNumbers(QStringView a, QStringView b);

} // namespace plum::edition2
