#pragma once

#include <functional>
#include <optional>
#include <qt_windows.h>
#include <vector>

namespace plum {

// A window that is never shown. It owns what this program puts on the clipboard and receives the messages
// that the system sends to windows alone. It is a top-level window, because the end of the session is told to
// no other.
class HiddenWindow
{
public:
    // Returns the message's result when it was meant for this receiver.
    using Receiver = std::function<std::optional<LRESULT>(UINT message, WPARAM word, LPARAM value)>;

    HiddenWindow();
    ~HiddenWindow();
    HiddenWindow(const HiddenWindow &) = delete;
    HiddenWindow &operator=(const HiddenWindow &) = delete;

    static constexpr wchar_t className[] = L"PlumHiddenWindow";

    // Null when the system has no room for a window.
    HWND handle() const { return m_window; }

    void addReceiver(Receiver receiver) { m_receivers.push_back(std::move(receiver)); }

private:
    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM word, LPARAM value);

    std::vector<Receiver> m_receivers;
    HWND m_window = nullptr;
};

} // namespace plum
