#pragma once

#include <QStringView>

#include <optional>

namespace plum {

// Whether all of `text` matches `pattern`: "*" any text, "?" one character, "#" one digit, "[a-z_]" one of
// the listed, "[!a-z_]" one that is not listed; letter case counts. Nothing for a pattern that is none: a
// list without its end, or a range that runs backwards.
std::optional<bool> matchesWildcards(QStringView text, QStringView pattern);

} // namespace plum
