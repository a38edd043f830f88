#pragma once

#include "engine/command_call.h"

#include <QString>

namespace plum {

// The script with its lines laid out anew, which means the same: only blanks at the ends of lines and line
// ends change. Edition 2 gets blocks indented by four blanks, and one kind of line ends, that of its first
// line; edition 1, where blanks count, CR LF alone.
QString laidOut(const QString &script, Edition edition);

} // namespace plum
