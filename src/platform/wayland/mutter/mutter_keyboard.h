#pragma once

#include "platform/keyboard.h"

#include <set>

namespace plum {

class DesktopExtension;
class RemoteSession;

// Keys by what they mean: the compositor presses the key, with Shift where it takes that, that has the symbol
// in the user's layout. For a text Plum's extension gives the keyboard keys for what the layout lacks.
// Virtual keys that name no key, code 0 among them, are nothing here; ExtendedKey makes no difference.
class MutterKeyboard final : public Keyboard
{
public:
    MutterKeyboard(RemoteSession &session, DesktopExtension &extension)
        : m_session(session)
        , m_extension(extension)
    {
    }

    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void releaseAll() override;

private:
    void send(quint32 symbol, bool down);

    RemoteSession &m_session;
    DesktopExtension &m_extension;
    std::set<quint32> m_down; // symbols
};

} // namespace plum
