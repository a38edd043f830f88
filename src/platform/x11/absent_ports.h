#pragma once

#include "platform/global_hotkey.h"
#include "platform/javascript.h"

namespace plum {

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

} // namespace plum
