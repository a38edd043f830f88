#pragma once

#include <QString>

namespace plum {

// A link for a label with rich text, in the program's colour and with a blank in front.
QString richLink(const QString &target, const QString &caption);

} // namespace plum
