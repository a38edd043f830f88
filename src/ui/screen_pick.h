#pragma once

#include "ui/picked_text.h"

#include <QObject>

namespace plum {

class LauncherSummons;
class frmSet;

// Gets the launcher out of the way while something is picked from the screen, and brings it back.
class ScreenPick final : public QObject
{
    Q_OBJECT

public:
    ScreenPick(frmSet &window, LauncherSummons &summons, PickFromScreen pick);

    void begin(const PickRequest &request, std::function<void(const PickedText &)> then);

private:
    frmSet &m_window;
    LauncherSummons &m_summons;
    PickFromScreen m_pick;
    bool m_isPicking = false;
};

} // namespace plum
