#pragma once

#include <QString>

#include <optional>

class QJSValue;

namespace plum {

// A value as the classic script host hands it to a program that wants text: numbers with at most 15 digits,
// True and False, nothing for undefined, [object Error] for an error object. Nothing at all (not even the
// empty text) for null, which is no text there.
std::optional<QString> classicText(const QJSValue &value);

QString classicNumber(double number);

} // namespace plum
