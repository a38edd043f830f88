#include "stopping/gated_platform.h"

#include "platform/typed_text.h"
#include "stopping/input_gate.h"

namespace plum {

namespace {

// Leaves a text in the middle: whoever waits inside of a call of the keyboard keeps its changes to the layout
// from the runs that go on meanwhile.
struct TypingInterrupted
{
};

} // namespace

void GatedPlatform::GatedKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    if (m_gate.isOn()) {
        if ((flags & KeyUp) == 0)
            m_gate.pass(m_inner, InputGate::Input::Key);
        m_gate.noteKey(virtualKey, flags);
    }
    m_inner.keyboard().keyEvent(virtualKey, flags);
}

bool GatedPlatform::GatedKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    if (!m_gate.isOn())
        return m_inner.keyboard().typeText(text, before);
    for (;;) {
        m_gate.pass(m_inner, InputGate::Input::Key);
        QStringView left = text;
        try {
            return m_inner.keyboard().typeText(text, [&] {
                // The characters before this one have been sent.
                text = left;
                if (m_gate.isShut(m_inner, InputGate::Input::Key))
                    throw TypingInterrupted();
                before();
                left = left.sliced(unitsOfCharacter(left));
            });
        } catch (const TypingInterrupted &) {
            // The rest is typed when the gate is open again.
        }
    }
}

void GatedPlatform::GatedPointer::moveTo(QPoint point)
{
    m_gate.pass(m_inner, InputGate::Input::Motion);
    m_gate.noteMotion(point);
    m_inner.pointer().moveTo(point);
}

void GatedPlatform::GatedPointer::buttonEvent(quint32 flags)
{
    const bool isPress = (flags & (LeftDown | RightDown)) != 0;
    if (isPress)
        m_gate.pass(m_inner, InputGate::Input::Button);
    if (isPress && m_gate.isScoped()) {
        Windows &windows = m_inner.windows();
        m_gate.noteClick(windows.topLevel(windows.underPointer()));
    }
    m_inner.pointer().buttonEvent(flags);
}

void GatedPlatform::GatedWindows::noteFront()
{
    if (m_gate.isScoped())
        m_gate.noteActivation(foreground());
}

void GatedPlatform::GatedWindows::close(WindowHandle window)
{
    m_gate.noteGone(window);
    WrappedWindows::close(window);
}

void GatedPlatform::GatedWindows::hide(WindowHandle window)
{
    m_gate.noteGone(window);
    WrappedWindows::hide(window);
}

void GatedPlatform::GatedWindows::minimise(WindowHandle window)
{
    m_gate.noteGone(window);
    WrappedWindows::minimise(window);
}

void GatedPlatform::GatedWindows::activate(WindowHandle window)
{
    WrappedWindows::activate(window);
    noteFront();
}

void GatedPlatform::GatedWindows::show(WindowHandle window)
{
    WrappedWindows::show(window);
    noteFront();
}

void GatedPlatform::GatedWindows::moveTo(WindowHandle window, QPoint corner)
{
    WrappedWindows::moveTo(window, corner);
    noteFront();
}

} // namespace plum
