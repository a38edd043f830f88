#pragma once

#include "platform/pointer.h"

namespace plum {

class Win32Pointer final : public Pointer
{
public:
    QPoint position() override;
    void moveTo(QPoint point) override;
    void buttonEvent(quint32 flags) override;
    void releaseAll() override;

private:
    quint32 m_toRelease = 0; // the up events that are still due
};

} // namespace plum
