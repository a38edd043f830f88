#pragma once

#include <QString>

namespace plum {

// A size for people, in the manner of Windows: "532 bytes", "1.50 KB", "22.9 KB", "240 MB". Three digits,
// cut off, not rounded; below 1 KB whole bytes.
QString byteSizeText(double bytes);

} // namespace plum
