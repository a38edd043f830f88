#pragma once

#include "platform/global_hotkey.h"
#include "platform/screen.h"
#include "platform/session.h"

namespace plum {

class AbsentHotkey final : public GlobalHotkey
{
public:
    bool registerHotkey(quint32, quint32) override { return false; }
    void unregisterHotkey() override { }
};
class AbsentScreen final : public Screen
{
public:
    QSize mainScreenSize() override { return {}; }
    Capture capture(const QRect &) override { return {}; }
};
class AbsentSession final : public Session
{
public:
    Outcome lockScreen() override { return Outcome::Unavailable; }
    Outcome monitorOff() override { return Outcome::Unavailable; }
    Outcome logOff() override { return Outcome::Unavailable; }
    Outcome shutDown() override { return Outcome::Unavailable; }
    Outcome restart() override { return Outcome::Unavailable; }
};

} // namespace plum
