#include "platform/file_claim.h"

#include "platform/win32/text/wide_text.h"

#include <QByteArray>

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
    // Others may read who holds it, and nobody else may write.
    const HANDLE file = CreateFileW(wide(systemPath), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION ? Outcome::HeldByAnother : Outcome::Impossible;
    m_handle = reinterpret_cast<qintptr>(file);
    const QByteArray process = QByteArray::number(static_cast<qint64>(GetCurrentProcessId()));
    DWORD written = 0;
    SetEndOfFile(file);
    WriteFile(file, process.constData(), static_cast<DWORD>(process.size()), &written, nullptr);
    return Outcome::Claimed;
}

std::optional<qint64> FileClaim::holder(const QString &systemPath)
{
    const HANDLE file = CreateFileW(wide(systemPath), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    QByteArray process(16, '\0');
    DWORD length = 0;
    ReadFile(file, process.data(), static_cast<DWORD>(process.size()), &length, nullptr);
    CloseHandle(file);
    bool isNumber = false;
    const qint64 number = process.first(static_cast<qsizetype>(length)).toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

void FileClaim::release()
{
    if (m_handle != none)
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(m_handle, none)));
}

} // namespace plum
