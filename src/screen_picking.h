#pragma once

#include "platform/platform.h"
#include "ui/picked_text.h"

#include <memory>

namespace plum {

class Picker;

// The picker at work for the launcher's editor.
class ScreenPicking
{
public:
    explicit ScreenPicking(Platform &platform);
    ~ScreenPicking();
    Q_DISABLE_COPY_MOVE(ScreenPicking)

    void pick(const PickRequest &request, const std::function<void(const PickedText &)> &then);

private:
    Platform &m_platform;
    std::unique_ptr<Picker> m_picker; // while it is open
};

} // namespace plum
