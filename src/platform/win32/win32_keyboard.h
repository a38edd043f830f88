#pragma once

#include "platform/keyboard.h"

#include <bitset>

namespace plum {

// Key events as the system numbers them: a virtual key goes out as it is, code 0 and unknown codes too. What
// a letter key types is up to the receiver's keyboard layout.
class Win32Keyboard final : public Keyboard
{
public:
    void keyEvent(quint8 virtualKey, quint32 flags) override;
    bool typeText(QStringView text, const BeforeCharacter &before) override;
    void releaseAll() override;

private:
    std::bitset<256> m_down;
};

} // namespace plum
