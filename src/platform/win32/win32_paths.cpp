#include "platform/win32/win32_paths.h"

#include <array>
#include <qt_windows.h>

namespace plum {

namespace {

constexpr DWORD longestPath = 32768; // characters
constexpr qsizetype driveLength = 2; // "C:"

QString programPath()
{
    const auto path = std::make_unique<std::array<wchar_t, longestPath>>();
    const DWORD length = GetModuleFileNameW(nullptr, path->data(), longestPath);
    return QString::fromWCharArray(path->data(), static_cast<qsizetype>(length));
}

} // namespace

Win32Paths::Win32Paths()
    : m_programFolder(programPath())
{
    m_programFolder.truncate(m_programFolder.lastIndexOf(u'\\'));
    if (m_programFolder.size() == driveLength)
        m_programFolder += u'\\';
}

} // namespace plum
