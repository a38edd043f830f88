#pragma once

#include "platform/file_claim.h"
#include "platform/global_hotkey.h"
#include "platform/wayland/sway/sway_socket.h"

#include <memory>

class QSocketNotifier;

namespace plum {

// A key binding that is given to sway while this program runs. Sway keeps no keys back, and does not tell
// what is bound already: a binding of the user's is looked for in the configuration, one of another Plum in a
// file that it claims.
class SwayHotkey final : public GlobalHotkey
{
    Q_OBJECT

public:
    SwayHotkey();
    ~SwayHotkey() override;

    bool registerHotkey(quint32 modifiers, quint32 virtualKey) override;
    void unregisterHotkey() override;
    void giveKeysTo(WindowHandle) override { }
    void takeKeysFrom(WindowHandle) override { }
    quint32 now() override;

private:
    bool listen();
    void readEvents();

    SwaySocket m_commands;
    SwaySocket m_bindings;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_command; // what the binding does: nothing, under a name of our own
    QString m_combination; // empty when nothing is registered
    FileClaim m_claim;
};

} // namespace plum
