#include "platform/win32/end_requests.h"

#include "platform/win32/hidden_window.h"

#include <atomic>

namespace plum {

namespace {

// The console's handler runs in a thread of its own and is told nothing but the kind of request, so where it
// reports to has to be static.
std::atomic<HWND> reportTo = nullptr;

constexpr UINT interruptMessage = WM_APP + 0x31;

BOOL WINAPI reportConsoleRequest(DWORD request)
{
    const bool isInterrupt = request == CTRL_C_EVENT || request == CTRL_BREAK_EVENT;
    PostMessageW(reportTo, isInterrupt ? interruptMessage : WM_CLOSE, 0, 0);
    // The process is ended for it when the handler returns from the others.
    if (!isInterrupt)
        Sleep(INFINITE);
    return TRUE;
}

} // namespace

EndRequests::EndRequests(HiddenWindow &window, std::function<void()> end, std::function<void()> interrupted)
    : m_end(std::move(end))
    , m_interrupted(std::move(interrupted))
{
    window.addReceiver([this](UINT message, WPARAM word, LPARAM) -> std::optional<LRESULT> {
        switch (message) {
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:
            if (word != FALSE)
                m_end();
            return 0;
        case WM_CLOSE:
            m_end();
            return 0;
        case interruptMessage:
            m_interrupted();
            return 0;
        default:
            return {};
        }
    });
    reportTo = window.handle();
    SetConsoleCtrlHandler(&reportConsoleRequest, TRUE);
}

EndRequests::~EndRequests()
{
    SetConsoleCtrlHandler(&reportConsoleRequest, FALSE);
    reportTo = nullptr;
}

} // namespace plum
