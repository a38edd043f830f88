#include "ui/sethotkey.h"

#include "platform/global_hotkey.h"

namespace plum {

sethotkey::sethotkey(GlobalHotkey &port)
    : m_port(port)
{
    connect(&m_port, &GlobalHotkey::fired, this, &sethotkey::fired);
}

sethotkey::~sethotkey()
{
    UnregisterLauncherHotkey();
}

void sethotkey::RegisterLauncherHotkey(const QString &letter)
{
    UnregisterLauncherHotkey();
    if (!letter.isEmpty())
        letterCode = letter.front().unicode();
    if (letterCode >= 'A' && letterCode <= 'Z') {
        m_isRegistered = m_port.registerHotkey(modifierFlags, letterCode);
        m_isTaken = !m_isRegistered;
    }
    Q_EMIT registrationChanged();
}

void sethotkey::UnregisterLauncherHotkey()
{
    m_isTaken = false;
    if (!m_isRegistered)
        return;
    m_port.unregisterHotkey();
    m_isRegistered = false;
    Q_EMIT registrationChanged();
}

} // namespace plum
