#include "platform/win32/win32_keyboard.h"

#include <qt_windows.h>

#include <vector>

namespace plum {

namespace {

void appendTap(std::vector<INPUT> &events, WORD virtualKey, WORD unit, DWORD flags)
{
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = virtualKey;
    event.ki.wScan = unit;
    event.ki.dwFlags = flags;
    events.push_back(event);
    event.ki.dwFlags |= KEYEVENTF_KEYUP;
    events.push_back(event);
}

// Neither a control character nor half of a pair.
bool canBeTyped(QStringView text, qsizetype at)
{
    const QChar unit = text[at];
    if (unit.isHighSurrogate())
        return at + 1 < text.size() && text[at + 1].isLowSurrogate();
    if (unit.isLowSurrogate())
        return at > 0 && text[at - 1].isHighSurrogate();
    return unit >= u' ' && (unit < QChar(0x7f) || unit >= QChar(0xa0));
}

} // namespace

void Win32Keyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    keybd_event(virtualKey, 0, flags & (ExtendedKey | KeyUp), 0);
    m_down[virtualKey] = (flags & KeyUp) == 0;
}

bool Win32Keyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    std::vector<INPUT> events; // of one character
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text[at];
        if (unit == u'\n' && at > 0 && text[at - 1] == u'\r')
            continue;
        if (unit == u'\r' || unit == u'\n')
            appendTap(events, VK_RETURN, 0, 0);
        else if (unit == u'\t')
            appendTap(events, VK_TAB, 0, 0);
        else if (canBeTyped(text, at))
            appendTap(events, 0, unit.unicode(), KEYEVENTF_UNICODE);
        else
            return false;
        if (unit.isHighSurrogate())
            continue;
        before();
        const auto count = static_cast<UINT>(events.size());
        if (SendInput(count, events.data(), sizeof(INPUT)) != count)
            return false;
        events.clear();
    }
    return true;
}

void Win32Keyboard::releaseAll()
{
    for (std::size_t key = 0; key < m_down.size(); ++key) {
        if (m_down[key])
            keyEvent(static_cast<quint8>(key), KeyUp);
    }
}

} // namespace plum
