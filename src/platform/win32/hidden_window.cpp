#include "platform/win32/hidden_window.h"

namespace plum {

namespace {

// Without a title it would be found by scripts that look for a window without one.
constexpr wchar_t title[] = L"Plum (messages)";

} // namespace

HiddenWindow::HiddenWindow()
{
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &HiddenWindow::receive;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = className;
    RegisterClassExW(&description); // fails from the second window on, which does not matter
    m_window = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, className, title, WS_POPUP, 0, 0, 0, 0,
        nullptr, nullptr, description.hInstance, nullptr);
    if (m_window)
        SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HiddenWindow::~HiddenWindow()
{
    if (!m_window)
        return;
    // The receivers may be gone already.
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    DestroyWindow(m_window);
}

LRESULT CALLBACK HiddenWindow::receive(HWND window, UINT message, WPARAM word, LPARAM value)
{
    if (const auto *self = reinterpret_cast<HiddenWindow *>(GetWindowLongPtrW(window, GWLP_USERDATA))) {
        for (const Receiver &receiver : self->m_receivers) {
            if (const std::optional<LRESULT> result = receiver(message, word, value))
                return *result;
        }
    }
    // Nobody but this object destroys the window.
    return message == WM_CLOSE ? 0 : DefWindowProcW(window, message, word, value);
}

} // namespace plum
