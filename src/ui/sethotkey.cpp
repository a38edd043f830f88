#include "ui/sethotkey.h"

#include <chrono>
#include <utility>

namespace plum {

namespace {

constexpr std::chrono::seconds betweenTries{1};

} // namespace

sethotkey::sethotkey(GlobalHotkey &port)
    : m_port(port)
{
    connect(&m_port, &GlobalHotkey::fired, this, &sethotkey::fired);
    connect(&m_retry, &QTimer::timeout, this, &sethotkey::tryToRegister);
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
    // What the user chooses meanwhile is not asked for before it is confirmed.
    m_wanted = {modifierFlags, letterCode};
    if (letterCode >= 'A' && letterCode <= 'Z')
        tryToRegister();
    else
        Q_EMIT registrationChanged();
}

QString sethotkey::keys() const
{
    QString keys;
    for (const Modifier &each : modifiers) {
        if (m_wanted.modifiers & each.flag)
            keys += each.name + u'+';
    }
    return keys + QChar(m_wanted.letter);
}

// No system tells when a combination becomes free.
void sethotkey::tryToRegister()
{
    m_isRegistered = m_port.registerHotkey(m_wanted.modifiers, m_wanted.letter);
    const bool wasTaken = std::exchange(m_isTaken, !m_isRegistered);
    if (m_isRegistered)
        m_retry.stop();
    else
        m_retry.start(betweenTries);
    if (m_isRegistered || !wasTaken)
        Q_EMIT registrationChanged();
}

void sethotkey::UnregisterLauncherHotkey()
{
    m_isTaken = false;
    m_retry.stop();
    if (!m_isRegistered)
        return;
    m_port.unregisterHotkey();
    m_isRegistered = false;
    Q_EMIT registrationChanged();
}

} // namespace plum
