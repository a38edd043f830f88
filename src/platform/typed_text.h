#pragma once

#include <QStringView>

#include <vector>

namespace plum {

// What `Keyboard::typeText` has to type: characters, with '\n' for the enter key and '\t' for the tab key.
struct TypedText
{
    std::vector<char32_t> characters;
    bool isWhole; // false where it ends before something that no key types
};

TypedText charactersOf(QStringView text);

// How many units of UTF-16 the first character of `text` has, which is not empty: the two of a line end and
// of a pair are one character.
qsizetype unitsOfCharacter(QStringView text);

} // namespace plum
