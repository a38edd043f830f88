#pragma once

#include "platform/global_hotkey.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <array>

namespace plum {

// Module `sethotkey`: the one system-wide hotkey and its registration. A combination that another program
// holds is not reported by the registration itself; `isTaken` tells it to whoever asks, and the combination
// is taken as soon as it is free.
class sethotkey final : public QObject
{
    Q_OBJECT

public:
    struct Modifier
    {
        quint32 flag;
        QLatin1StringView name;
    };

    // In the order of the choices of the hotkey window.
    static constexpr std::array modifiers{Modifier{GlobalHotkey::Alt, QLatin1StringView("Alt")},
        Modifier{GlobalHotkey::Control, QLatin1StringView("Ctrl")},
        Modifier{GlobalHotkey::Shift, QLatin1StringView("Shift")}};

    explicit sethotkey(GlobalHotkey &port);
    ~sethotkey() override;
    Q_DISABLE_COPY_MOVE(sethotkey)

    // Registers the first character of `letter` with the current modifiers, in place of an earlier hotkey.
    // An empty letter keeps the character of the last registration.
    void RegisterLauncherHotkey(const QString &letter);

    // Safe when nothing is registered.
    void UnregisterLauncherHotkey();

    bool isRegistered() const { return m_isRegistered; }
    bool isTaken() const { return m_isTaken; }

    // The combination of the last registration as it is written, e.g. "Alt+Z"; a letter alone without a
    // modifier.
    QString keys() const;

    // The letter alone is taken, as from damaged settings: nobody can type it any more.
    bool isBareLetter() const { return m_isRegistered && m_wanted.modifiers == 0; }

    QString hotkeyText; // "<modifier>+<letter>", e.g. "Alt+Z"
    quint32 modifierFlags = 0; // 1 Alt, 2 Ctrl, 4 Shift
    quint32 letterCode = 0; // 65 to 90; 0 before the first registration

Q_SIGNALS:
    void fired(quint32 time);
    void registrationChanged();

private:
    struct Combination
    {
        quint32 modifiers = 0;
        quint32 letter = 0;
    };

    void tryToRegister();

    GlobalHotkey &m_port;
    Combination m_wanted; // of the last registration
    QTimer m_retry; // runs while another program holds the combination
    bool m_isRegistered = false;
    bool m_isTaken = false;
};

} // namespace plum
