#include "ui/run_display.h"

#include "engine/run_state.h"
#include "ui/controls/footer.h"
#include "ui/frm_set.h"
#include "ui/sett.h"

#include <chrono>
#include <utility>

namespace plum {

using namespace std::chrono_literals;

namespace {

constexpr auto betweenLooks = 250ms;
constexpr auto doneTime = 2s;

} // namespace

RunDisplay::RunDisplay(Needs needs)
    : m(std::move(needs))
{
    m_looks.setInterval(betweenLooks);
    connect(&m_looks, &QTimer::timeout, this, &RunDisplay::show);
}

void RunDisplay::began()
{
    m_hasShown = false;
    m_looks.start();
}

void RunDisplay::show()
{
    const InputPause pause = m.inputPause ? m.inputPause() : InputPause();
    m.window.setWaitsForHand(pause.reason == InputPause::Reason::Hand);
    setText(textOf(pause));
}

QString RunDisplay::textOf(InputPause pause) const
{
    if (const auto held = m.heldLine ? m.heldLine() : std::nullopt)
        return tr("%1 is held before line %2").arg(m.state.currentKeyword).arg(*held);
    switch (pause.reason) {
    case InputPause::Reason::Hand:
        return tr("%1 lets you work, and goes on in %2 s")
            .arg(m.state.currentKeyword)
            .arg(double(pause.milliseconds) / 1000, 0, 'f', 1);
    case InputPause::Reason::OtherWindow:
        return tr("%1 waits at line %2 until its window is in front again")
            .arg(m.state.currentKeyword)
            .arg(m.state.currentLine + 1);
    case InputPause::Reason::None:
        break;
    }
    return tr("%1 runs, line %2").arg(m.state.currentKeyword).arg(m.state.currentLine + 1);
}

void RunDisplay::ended(bool isSuspended)
{
    if (!m_looks.isActive())
        return;
    m_looks.stop();
    m.window.setWaitsForHand(false);
    setText({});
    if (!isSuspended && !m_hasShown)
        m.window.footer().say(tr("%1: done").arg(m.state.currentKeyword), doneTime);
}

void RunDisplay::setText(const QString &text)
{
    m.window.footer().setRunning(text);
    if (sett *tray = m.tray())
        tray->setRunning(text);
}

} // namespace plum
