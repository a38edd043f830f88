#include "stopping/hand_stop.h"

#include "platform/keyboard.h"
#include "platform/platform.h"
#include "platform/pointer.h"
#include "platform/stop_signal.h"

#include <utility>

namespace plum {

HandStop::HandStop(Platform &platform, StopSignal &stop, std::function<QString()> keyword)
    : m_platform(platform)
    , m_stop(stop)
    , m_keyword(std::move(keyword))
    , m_options(platform)
{
}

// What goes on after a question is the same run.
void HandStop::setWatching(bool isWatching)
{
    if (std::exchange(m_isWatching, isWatching) == isWatching)
        return;
    if (!isWatching) {
        m_watch.reset();
        return;
    }
    m_options.read();
    const bool yields = m_options.yields();
    m_gate.begin(
        {.yields = yields, .isScoped = [this] { return m_isScoped || m_options.isScoped(m_keyword()); }});
    m_watch = m_platform.watchHand({.hotkey = m_options.hotkey(),
        .ownKeys = m_stop.ownKeys(),
        .stop = [this] { m_stop.raise(); },
        .atWork = yields ? [this] { m_gate.noteHand(); } : std::function<void()>()});
}

void HandStop::releaseKeys()
{
    m_platform.pointer().releaseAll();
    m_platform.keyboard().releaseAll();
}

} // namespace plum
