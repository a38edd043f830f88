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

} // namespace plum
