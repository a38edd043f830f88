#include "platform/launcher_call.h"

#include "platform/win32/hidden_window.h"

namespace plum {

namespace {

// The same number in every process.
UINT callingMessage()
{
    static const UINT message = RegisterWindowMessageW(L"PlumFetchLauncher");
    return message;
}

class PostedCall final : public LauncherCall
{
public:
    explicit PostedCall(std::function<void(Kind)> answer)
    {
        m_window.addReceiver(
            [answer = std::move(answer)](UINT message, WPARAM kind, LPARAM) -> std::optional<LRESULT> {
                if (message != callingMessage())
                    return {};
                answer(static_cast<Kind>(kind));
                return 0;
            });
    }

private:
    HiddenWindow m_window;
};

} // namespace

std::unique_ptr<LauncherCall> LauncherCall::listen(std::function<void(Kind kind)> answer)
{
    return std::make_unique<PostedCall>(std::move(answer));
}

// The system lets only the program that had the last input, which is this one, pass the attention on.
bool LauncherCall::call(qint64 process, Kind kind)
{
    bool isThere = false;
    for (HWND window = nullptr;
         (window = FindWindowExW(nullptr, window, HiddenWindow::className, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner != static_cast<DWORD>(process))
            continue;
        AllowSetForegroundWindow(owner);
        isThere = PostMessageW(window, callingMessage(), static_cast<WPARAM>(kind), 0) || isThere;
    }
    return isThere;
}

} // namespace plum
