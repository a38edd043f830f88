#include "stopping/hand_stop.h"

#include "platform/keyboard.h"
#include "platform/platform.h"
#include "platform/pointer.h"
#include "platform/stop_signal.h"

namespace plum {

HandStop::HandStop(Platform &platform, StopSignal &stop, std::function<StopHotkey()> hotkey)
    : m_platform(platform)
    , m_stop(stop)
    , m_hotkey(std::move(hotkey))
{
}

void HandStop::setWatching(bool isWatching)
{
    if (!isWatching)
        m_watch.reset();
    else if (!m_watch)
        m_watch = m_platform.watchHand(
            {.hotkey = m_hotkey(), .ownKeys = m_stop.ownKeys(), .stop = [this] { m_stop.raise(); }});
}

void HandStop::releaseKeys()
{
    m_platform.pointer().releaseAll();
    m_platform.keyboard().releaseAll();
}

} // namespace plum
