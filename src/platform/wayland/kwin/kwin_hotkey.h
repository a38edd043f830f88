#pragma once

#include "platform/file_claim.h"
#include "platform/global_hotkey.h"

namespace plum {

class KWinBus;

// A global shortcut of KWin's, which the user finds among those of the system settings while Plum runs. KWin
// keeps no keys back. Shortcuts belong to programs and not to processes, so one of another Plum is found by a
// file that it claims.
class KWinHotkey final : public GlobalHotkey
{
    Q_OBJECT

public:
    explicit KWinHotkey(KWinBus &bus);
    ~KWinHotkey() override;

    bool registerHotkey(quint32 modifiers, quint32 virtualKey) override;
    void unregisterHotkey() override;
    void giveKeysTo(WindowHandle) override { }
    void takeKeysFrom(WindowHandle) override { }
    quint32 now() override;

private Q_SLOTS:
    void take(const QString &component, const QString &action, qlonglong time);

private:
    bool listen();
    bool hold(const QString &action, int key);

    KWinBus &m_bus;
    QString m_action; // empty when nothing is registered
    FileClaim m_claim;
    bool m_isListening = false;
};

} // namespace plum
