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
    explicit PostedCall(std::function<void()> answer)
    {
        m_window.addReceiver(
            [answer = std::move(answer)](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
                if (message != callingMessage())
                    return {};
                answer();
                return 0;
            });
    }

private:
    HiddenWindow m_window;
};

} // namespace

std::unique_ptr<LauncherCall> LauncherCall::listen(std::function<void()> answer)
{
    return std::make_unique<PostedCall>(std::move(answer));
}

// The system lets only the program that had the last input, which is this one, pass the attention on.
void LauncherCall::call(qint64 process)
{
    for (HWND window = nullptr;
         (window = FindWindowExW(nullptr, window, HiddenWindow::className, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner != static_cast<DWORD>(process))
            continue;
        AllowSetForegroundWindow(owner);
        PostMessageW(window, callingMessage(), 0, 0);
    }
}

} // namespace plum
