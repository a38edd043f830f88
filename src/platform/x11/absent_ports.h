#pragma once

#include "platform/clipboard.h"
#include "platform/global_hotkey.h"
#include "platform/javascript.h"
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
class AbsentJavaScript final : public JavaScript
{
public:
    Result evaluate(const QString &) override { return {}; }
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
