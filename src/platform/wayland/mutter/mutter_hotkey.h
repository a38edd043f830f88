#pragma once

#include "platform/global_hotkey.h"

namespace plum {

class DesktopExtension;

// Keys that Plum's extension grabs in the compositor. GNOME keeps no keys back that are typed after them.
class MutterHotkey final : public GlobalHotkey
{
    Q_OBJECT

public:
    explicit MutterHotkey(DesktopExtension &extension);

    bool registerHotkey(quint32 modifiers, quint32 virtualKey) override;
    void unregisterHotkey() override;
    void giveKeysTo(WindowHandle) override { }
    void takeKeysFrom(WindowHandle) override { }
    quint32 now() override;

public Q_SLOTS:
    void take(uint time);

private:
    DesktopExtension &m_extension;
    bool m_isRegistered = false;
};

} // namespace plum
