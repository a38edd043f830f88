#pragma once

#include <QString>

namespace plum {

// `text` as the system's calls want it; valid as long as the string is neither changed nor gone.
inline const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

} // namespace plum
