#pragma once

#include <array>

namespace plum {

// The names under which programs offer a text in UTF-8, the most definite one first.
inline constexpr std::array textTypes{
    "text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "TEXT", "STRING"};

} // namespace plum
