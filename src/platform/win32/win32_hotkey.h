#pragma once

#include "platform/global_hotkey.h"

namespace plum {

class HiddenWindow;

class Win32Hotkey final : public GlobalHotkey
{
    Q_OBJECT

public:
    explicit Win32Hotkey(HiddenWindow &window);
    ~Win32Hotkey() override;

    bool registerHotkey(quint32 modifiers, quint32 virtualKey) override;
    void unregisterHotkey() override;
    // Keys go where they always go: the system hands them to the window in front as they come.
    void giveKeysTo(WindowHandle) override { }
    void takeKeysFrom(WindowHandle) override { }
    quint32 now() override;

private:
    HiddenWindow &m_window;
    bool m_isRegistered = false;
};

} // namespace plum
