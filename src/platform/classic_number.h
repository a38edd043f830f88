#pragma once

#include <QString>

namespace plum {

// A number as the classic script host hands it to a program that wants text: at most 15 digits, whatever the
// system's language.
QString classicNumber(double number);

} // namespace plum
