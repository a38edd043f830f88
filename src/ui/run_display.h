#pragma once

#include "platform/input_pause.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace plum {

class frmSet;
class sett;
struct RunState;

// Shows in the launcher and at the tray icon that a script runs, and which line, and says when one is over
// that has shown nothing itself, and why one does not go on. A run that is over within a moment is not
// announced.
class RunDisplay final : public QObject
{
    Q_OBJECT

public:
    struct Needs
    {
        frmSet &window;
        const RunState &state;
        std::function<sett *()> tray; // null before there is one
        std::function<InputPause()> inputPause = {}; // of the run that goes on
        std::function<std::optional<int>()> heldLine = {}; // from 1, before which the editor holds it
    };

    explicit RunDisplay(Needs needs);

    void began();

    // The run has shown a tip, a question or a message, or has hidden the launcher.
    void hasShown() { m_hasShown = true; }

    // No line is carried out any more; `isSuspended`: until the user answers.
    void ended(bool isSuspended);

private:
    void show();
    void setText(const QString &text);
    QString textOf(InputPause pause) const;

    Needs m;
    QTimer m_looks;
    bool m_hasShown = false;
};

} // namespace plum
