#include "platform/file_claim.h"

#include "platform/win32/text/wide_text.h"

#include <qt_windows.h>

#include <utility>

namespace plum {

FileClaim::~FileClaim()
{
    release();
}

FileClaim::Outcome FileClaim::claim(const QString &systemPath)
{
    release();
    constexpr DWORD sharedWithNobody = 0;
    const HANDLE file = CreateFileW(wide(systemPath), GENERIC_READ | GENERIC_WRITE, sharedWithNobody, nullptr,
        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION ? Outcome::HeldByAnother : Outcome::Impossible;
    m_handle = reinterpret_cast<qintptr>(file);
    return Outcome::Claimed;
}

void FileClaim::release()
{
    if (m_handle != none)
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(m_handle, none)));
}

} // namespace plum
