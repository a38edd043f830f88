#pragma once

#include "sheet/sheet.h"

#include <QJsonObject>

#include <optional>

namespace plum {

// A sheet as JSON, in the same words whatever machine computed it: one array of words for each class that the
// sheet has, `docs/security.md` says which words there are.
//
//   {"network":["host:example.org"],"read":["app:notes.txt"],"see":["clipboard"]}
QJsonObject toJson(const Sheet &sheet);

// Nothing for what is no sheet, or says something that this Plum does not know.
std::optional<Sheet> sheetFromJson(const QJsonObject &json);

// The same of a JSON text.
std::optional<Sheet> sheetFromText(const QByteArray &json);

} // namespace plum
