#include "stopping/input_gate.h"

#include "platform/keyboard.h"
#include "platform/platform.h"
#include "platform/pointer.h"
#include "platform/stop_signal.h"
#include "platform/waitable_timers.h"

#include <QScopeGuard>

#include <algorithm>
#include <chrono>
#include <limits>
#include <ranges>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 never = std::numeric_limits<qint64>::min() / 2;

// The wish to go on is itself a key or click, and is heard of in two ways.
constexpr qint64 wishTime = 300; // milliseconds

constexpr qint64 betweenLooks = 50; // milliseconds
constexpr qint64 unitsPerMillisecond = 10'000;

} // namespace

qint64 InputGate::steadyMilliseconds()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

InputGate::InputGate(Clock clock)
    : m_clock(std::move(clock))
    , m_handAt(never)
    , m_goesOnAt(never)
{
}

void InputGate::begin(Rules rules)
{
    m_rules = std::move(rules);
    m_handAt = never;
    m_goesOnAt = never;
    m_scope = 0;
    m_clicked = 0;
    m_put.reset();
    m_held.clear();
}

void InputGate::goOn()
{
    m_goesOnAt = m_clock() + wishTime;
}

InputPause InputGate::reasonNow(Platform &platform, Input input)
{
    using Reason = InputPause::Reason;
    const qint64 handAt = m_handAt;
    const qint64 left = handAt + restTime - m_clock();
    if (m_rules.yields && handAt > m_goesOnAt && left > 0)
        return {Reason::Hand, static_cast<int>(left)};
    if (input != Input::Motion && isScoped() && !isInFront(platform.windows()))
        return {Reason::OtherWindow};
    return {};
}

bool InputGate::isInFront(Windows &windows)
{
    const WindowHandle front = windows.foreground();
    if (m_scope == 0 || (m_clicked != 0 && front == m_clicked)) {
        m_scope = front;
        m_clicked = 0;
    }
    return front == m_scope;
}

void InputGate::pass(Platform &platform, Input input)
{
    using Reason = InputPause::Reason;
    if (!isOn())
        return;
    InputPause pause = reasonNow(platform, input);
    if (pause.reason == Reason::None)
        return;
    const auto leave = qScopeGuard([this, before = m_pause] { m_pause = before; });
    const std::vector<HeldKey> held = std::exchange(m_held, {});
    for (const HeldKey &key : held | std::views::reverse)
        platform.keyboard().keyEvent(key.virtualKey, key.flags | Keyboard::KeyUp);
    if (m_tell)
        m_tell(pause);
    bool wasHand = false;
    for (; pause.reason != Reason::None; pause = reasonNow(platform, input)) {
        m_pause = pause;
        wasHand = wasHand || pause.reason == Reason::Hand;
        lookAgain(platform);
    }
    for (const HeldKey &key : held)
        platform.keyboard().keyEvent(key.virtualKey, key.flags);
    m_held.insert(m_held.begin(), held.begin(), held.end());
    if (wasHand && input == Input::Button && m_put && platform.pointer().position() != *m_put)
        platform.pointer().moveTo(*m_put);
}

// A run that cannot wait must not go on either.
void InputGate::lookAgain(Platform &platform)
{
    WaitableTimers &timers = platform.timers();
    const WaitableTimers::Handle timer = timers.create(u"InputGate%1"_s.arg(++m_waits)).handle;
    if (timer == 0)
        throw RunStopped();
    const auto close = qScopeGuard([&] { timers.close(timer); });
    timers.set(timer, -betweenLooks * unitsPerMillisecond);
    timers.waitOrPump(timer);
}

void InputGate::noteKey(quint8 virtualKey, quint32 flags)
{
    std::erase_if(m_held, [&](const HeldKey &key) { return key.virtualKey == virtualKey; });
    if ((flags & Keyboard::KeyUp) == 0)
        m_held.push_back({virtualKey, flags});
}

void InputGate::noteActivation(WindowHandle front)
{
    m_scope = front;
    m_clicked = 0;
}

void InputGate::noteGone(WindowHandle window)
{
    if (window == m_scope)
        m_scope = 0;
}

} // namespace plum
