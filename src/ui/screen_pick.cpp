#include "ui/screen_pick.h"

#include "ui/frm_set.h"
#include "ui/launcher_summons.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace plum {

namespace {

// What lies behind the launcher has to paint itself anew.
constexpr std::chrono::milliseconds timeToPaint{300};

} // namespace

ScreenPick::ScreenPick(frmSet &window, LauncherSummons &summons, PickFromScreen pick)
    : m_window(window)
    , m_summons(summons)
    , m_pick(std::move(pick))
{
}

void ScreenPick::begin(const PickRequest &request, std::function<void(const PickedText &)> then)
{
    if (!m_pick || std::exchange(m_isPicking, true))
        return;
    m_window.hide();
    QTimer::singleShot(timeToPaint, this, [this, request, then = std::move(then)] {
        m_pick(request, [this, then](const PickedText &picked) {
            m_isPicking = false;
            m_summons.showAndActivate();
            then(picked);
        });
    });
}

} // namespace plum
