#pragma once

#include <QString>

#include <optional>

namespace plum {

// What a path leads to in a JSON text. Without a value, `problem` says in one sentence why.
struct JsonFinding
{
    std::optional<QString> value;
    QString problem;
};

// Follows `path` from the outermost value of `json`: "a.b[0]" is the first element of b of a, [-1] the last
// one,
// ["a.b"] or ['a.b'] a name with other characters in it, and .length behind an array the number of its
// elements. The empty path is the whole text. Texts come without quotes, null as the empty text, numbers with
// the digits that they need, objects and arrays as JSON on one line.
JsonFinding followJsonPath(const QString &json, const QString &path);

} // namespace plum
