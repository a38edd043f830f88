#include "platform/platform.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <qt_windows.h>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Services run where nobody sees a window.
bool isDesktopVisible()
{
    USEROBJECTFLAGS flags{};
    return !GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr)
        || (flags.dwFlags & WSF_VISIBLE) != 0;
}

bool leadsSomewhere(DWORD stream)
{
    const HANDLE handle = GetStdHandle(stream);
    return handle && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

// A copy of a standard stream that is not handed on, in bytes as they are.
int takenStream(int stream)
{
    const int taken = _dup(stream);
    if (taken < 0)
        return taken;
    _setmode(taken, _O_BINARY);
    SetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(taken)), HANDLE_FLAG_INHERIT, 0);
    return taken;
}

} // namespace

void prepareStandardStreams()
{
    constexpr std::array streams{STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    const std::array files{stdout, stderr};
    const std::array isSet{leadsSomewhere(streams[0]), leadsSomewhere(streams[1])};
    if ((isSet[0] && isSet[1]) || !AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (!isSet[i])
            static_cast<void>(std::freopen("CONOUT$", "w", files[i]));
    }
}

TalkFiles takeStandardStreams()
{
    constexpr int input = 0;
    constexpr int output = 1;
    constexpr int errors = 2;
    const TalkFiles files{takenStream(input), takenStream(output)};
    if (const int nothing = _open("NUL", _O_RDONLY); nothing >= 0) {
        _dup2(nothing, input);
        _close(nothing);
    }
    _dup2(errors, output);
    return files;
}

StartEnvironment prepareEnvironment(bool needsDesktop)
{
    StartEnvironment start;
    start.hasDesktop = isDesktopVisible();
    if (!start.hasDesktop)
        start.notice = u"There is no desktop here that could show a window."_s;
    else if (needsDesktop)
        // A program that stays must not end with the console that it happened to be started from, nor with
        // the Ctrl+C that is meant for the next program there.
        FreeConsole();
    return start;
}

// Everything behind the program's name, which ends at its closing quote or at the first blank.
QString commandLine(int, char **)
{
    const QString whole = QString::fromWCharArray(GetCommandLineW());
    bool isQuoted = false;
    qsizetype end = 0;
    while (end < whole.size() && (isQuoted || (whole[end] != u' ' && whole[end] != u'\t'))) {
        if (whole[end] == u'"')
            isQuoted = !isQuoted;
        ++end;
    }
    return whole.sliced(end).trimmed();
}

} // namespace plum
