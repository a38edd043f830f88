#pragma once

#include <QtGlobal>

#include <functional>

namespace plum {

class OwnKeys;

// A key combination that stops runs: bits of `GlobalHotkey::Modifier`, and a letter from A to Z.
struct StopHotkey
{
    quint32 modifiers = 0;
    quint8 virtualKey = 0; // 0: there is none

    friend bool operator==(const StopHotkey &, const StopHotkey &) = default;
};

// What to look for at the user's keyboard while a run goes on.
struct HandSigns
{
    static constexpr int heldEscape = 700; // milliseconds

    StopHotkey hotkey;

    // A program that types for somebody far away cannot be told from a script by its events, so the hotkey
    // counts from there too, unless the script itself has just pressed that letter.
    const OwnKeys &ownKeys;

    // Esc was held on a real keyboard for `heldEscape`, or the hotkey was pressed. Called in a thread of the
    // watch's own.
    std::function<void()> stop;

    // The hand has moved or clicked the mouse, or pressed a key, on a real device. Called in that thread,
    // too, and often; empty where nobody wants to know.
    std::function<void()> atWork = {};
};

// Looks at the keyboards that hands use, and not at what scripts press, until it is destroyed.
class HandWatch
{
public:
    virtual ~HandWatch() = default;
};

} // namespace plum
