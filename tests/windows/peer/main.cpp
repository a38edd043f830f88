#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

// A small program of Windows that is none of Plum's and uses the system alone.
//   peer put TEXT                     puts the text on the clipboard and ends
//   peer read FILE SECTION KEY        prints the UTF-16 units of a private-profile value, hexadecimal
//   peer write FILE SECTION KEY VALUE
//   peer focus                        prints the class of the control that has the keyboard, and "dialog"
//   peer code-page                    prints the number of the ANSI code page

namespace {

int putOnClipboard(const std::wstring &text)
{
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    std::wmemcpy(static_cast<wchar_t *>(GlobalLock(memory)), text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
    while (!OpenClipboard(nullptr))
        Sleep(1);
    EmptyClipboard();
    const bool isThere = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
    CloseClipboard();
    return isThere ? 0 : 1;
}

int sayFocus()
{
    const HWND front = GetForegroundWindow();
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    wchar_t name[64] = L"";
    wchar_t frontName[64] = L"";
    if (GetGUIThreadInfo(GetWindowThreadProcessId(front, nullptr), &info) && info.hwndFocus)
        GetClassNameW(info.hwndFocus, name, 64);
    GetClassNameW(front, frontName, 64);
    const bool isDialog = std::wstring(frontName) == L"#32770"; // the class of all dialogs
    std::printf("%ls%s\n", name, isDialog ? " dialog" : "");
    return 0;
}

} // namespace

int wmain(int argc, wchar_t **argv)
{
    const std::wstring task = argc > 1 ? argv[1] : L"";
    if (task == L"put" && argc == 3)
        return putOnClipboard(argv[2]);
    if (task == L"read" && argc == 5) {
        wchar_t value[2048] = {};
        GetPrivateProfileStringW(argv[3], argv[4], L"", value, 2048, argv[2]);
        for (const wchar_t *unit = value; *unit != 0; ++unit)
            std::printf("%04x", static_cast<unsigned>(*unit));
        std::printf("\n");
        return 0;
    }
    if (task == L"write" && argc == 6)
        return WritePrivateProfileStringW(argv[3], argv[4], argv[5], argv[2]) ? 0 : 1;
    if (task == L"focus")
        return sayFocus();
    if (task == L"code-page") {
        std::printf("%u\n", GetACP());
        return 0;
    }
    return 2;
}
