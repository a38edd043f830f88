#pragma once

#include "platform/clipboard.h"
#include "platform/global_hotkey.h"
#include "platform/screen.h"
#include "platform/session.h"
#include "platform/shell.h"

namespace plum {

class AbsentClipboard final : public Clipboard
{
public:
    QString text() override { return {}; }
    void setText(const QString &) override { }
    void clear() override { }
    void outliveProcess() override { }
};
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
class AbsentShell final : public Shell
{
public:
    bool open(const QString &, const QString &, ShowState) override { return false; }
    bool startHelper(const QString &, const QString &, ShowState) override { return false; }
    QString desktopFolder() override { return {}; }
    QString shortcutTarget(const QString &path) override { return path; }
};

} // namespace plum
