#include "platform/win32/started_process.h"

#include "platform/win32/text/wide_text.h"

#include <QProcessEnvironment>

#include <array>
#include <qt_windows.h>
#include <string>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// This process's environment as the system hands it on, its search path begun with `folder`.
std::wstring environmentWith(const QString &folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, folder + u';' + environment.value(u"PATH"_s));
    std::wstring block;
    for (const QString &variable : environment.toStringList())
        block += variable.toStdWString() + L'\0';
    return block + L'\0';
}

} // namespace

bool startProcess(
    const QString &program, const QString &commandLine, int showCommand, const QString &libraryFolder)
{
    // The call may write into the command line.
    std::wstring line = (u"\"%1\" "_s.arg(program) + commandLine).toStdWString();
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESHOWWINDOW;
    how.wShowWindow = static_cast<WORD>(showCommand);
    PROCESS_INFORMATION started{};
    std::wstring environment = libraryFolder.isEmpty() ? std::wstring() : environmentWith(libraryFolder);
    if (!CreateProcessW(wide(program), line.data(), nullptr, nullptr, FALSE, CREATE_UNICODE_ENVIRONMENT,
            environment.empty() ? nullptr : environment.data(), nullptr, &how, &started))
        return false;
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return true;
}

QString systemProgram(const QString &fileName)
{
    std::array<wchar_t, MAX_PATH> folder{};
    const UINT length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return QString::fromWCharArray(folder.data(), static_cast<qsizetype>(length)) + u'\\' + fileName;
}

} // namespace plum
