#pragma once

#include "platform/desktop_windows.h"
#include "platform/input_pause.h"

#include <QPoint>

#include <atomic>
#include <functional>
#include <optional>
#include <vector>

namespace plum {

class Platform;

// Keeps what runs send to the desktop back: everything while the user's hand is at work, and keys and clicks
// while another window than theirs is in front. Neither happens unless the user has asked for it.
class InputGate final
{
public:
    enum class Input {
        Key,
        Button,
        Motion,
    };

    // What the user has asked for.
    struct Rules
    {
        bool yields = false; // to the hand
        std::function<bool()> isScoped = {}; // for the run that is going on; empty: none is
    };

    static constexpr int restTime = 1500; // milliseconds without the hand until a run goes on

    // Milliseconds that only grow; asked for in the hand's thread, too.
    using Clock = std::function<qint64()>;
    explicit InputGate(Clock clock = &steadyMilliseconds);

    // A run begins.
    void begin(Rules rules);

    // The hand has moved, clicked or pressed a key. In any thread.
    void noteHand() { m_handAt = m_clock(); }

    // The run that waits for the hand to rest goes on at once.
    void goOn();

    InputPause pause() const { return m_pause; }

    // Called when a pause begins.
    void onPause(std::function<void(InputPause)> tell) { m_tell = std::move(tell); }

    bool isOn() const { return m_rules.yields || m_rules.isScoped; }
    bool isScoped() const { return m_rules.isScoped && m_rules.isScoped(); }

    // Whether the input has to wait.
    bool isShut(Platform &platform, Input input)
    {
        return isOn() && reasonNow(platform, input).reason != InputPause::Reason::None;
    }

    // Returns when the input may be sent; the interface goes on meanwhile. Keys that runs hold come up for
    // that time, and the pointer is put back where a run had put it.
    void pass(Platform &platform, Input input);

    // What runs have done through the ports.
    void noteKey(quint8 virtualKey, quint32 flags);
    void noteMotion(QPoint to) { m_put = to; }
    void noteClick(WindowHandle window) { m_clicked = window; }
    void noteActivation(WindowHandle front);
    void noteGone(WindowHandle window);

private:
    struct HeldKey
    {
        quint8 virtualKey = 0;
        quint32 flags = 0;
    };

    static qint64 steadyMilliseconds();
    InputPause reasonNow(Platform &platform, Input input);
    bool isInFront(Windows &windows);
    void lookAgain(Platform &platform);

    Clock m_clock;
    Rules m_rules;
    std::function<void(InputPause)> m_tell;
    InputPause m_pause;
    std::atomic<qint64> m_handAt; // when it was last at work
    qint64 m_goesOnAt; // what the hand has done until then does not count
    WindowHandle m_scope = 0; // the window that keys and clicks are for; 0: the one that is in front next
    WindowHandle m_clicked = 0; // becomes that window when it comes to the front
    std::optional<QPoint> m_put; // where a run has last put the pointer
    std::vector<HeldKey> m_held;
    int m_waits = 0;
};

} // namespace plum
