#pragma once

#include <QString>

namespace plum {

// A link for a label with rich text, in the program's colour and with a blank in front.
QString richLink(const QString &target, const QString &caption);

// The target of the first such link in a text; empty when there is none.
QString targetOf(const QString &richText);

} // namespace plum
