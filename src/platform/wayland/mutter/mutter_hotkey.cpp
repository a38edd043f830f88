#include "platform/wayland/mutter/mutter_hotkey.h"

#include "platform/wayland/mutter/desktop_extension.h"
#include "platform/wayland/wire/event_time.h"

namespace plum {

using namespace Qt::StringLiterals;

MutterHotkey::MutterHotkey(DesktopExtension &extension)
    : m_extension(extension)
{
    m_extension.bus().listen(DesktopExtension::object(), u"KeysPressed"_s, this, SLOT(take(uint)));
}

bool MutterHotkey::registerHotkey(quint32 modifiers, quint32 virtualKey)
{
    unregisterHotkey();
    if (virtualKey < 'A' || virtualKey > 'Z')
        return false;
    QString accelerator;
    if (modifiers & Alt)
        accelerator += u"<Alt>"_s;
    if (modifiers & Control)
        accelerator += u"<Control>"_s;
    if (modifiers & Shift)
        accelerator += u"<Shift>"_s;
    accelerator += QChar(static_cast<char16_t>(virtualKey)).toLower();
    m_isRegistered = m_extension.grabKeys(accelerator);
    return m_isRegistered;
}

void MutterHotkey::unregisterHotkey()
{
    if (std::exchange(m_isRegistered, false))
        m_extension.releaseKeys();
}

// The clock of the compositor's events, too.
quint32 MutterHotkey::now()
{
    return eventTime();
}

void MutterHotkey::take(uint time)
{
    if (m_isRegistered)
        Q_EMIT fired(time);
}

} // namespace plum
