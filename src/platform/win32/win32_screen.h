#pragma once

#include "platform/screen.h"

#include <vector>

namespace plum {

// The picture on the screen through gdi32.
class Win32Screen final : public Screen
{
public:
    QSize mainScreenSize() override;
    QRect desktop() override;
    Capture capture(const QRect &region) override;
    Capture capturePlainly(const QRect &region) override;

private:
    Capture captureBy(quint32 operation, const QRect &region);

    std::vector<quint32> m_pixels;
};

} // namespace plum
