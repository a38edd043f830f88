#pragma once

#include "platform/keyboard.h"
#include "platform/pointer.h"
#include "platform/wrapped_platform.h"
#include "platform/wrapped_windows.h"

namespace plum {

class InputGate;

// A platform whose keys, clicks and motions wait at the gate. What lets a key or button go never waits:
// nothing is to stay down under the user's hand.
class GatedPlatform final : public WrappedPlatform
{
public:
    GatedPlatform(Platform &inner, InputGate &gate)
        : WrappedPlatform(inner)
        , m_keyboard(inner, gate)
        , m_pointer(inner, gate)
        , m_windows(inner, gate)
    {
    }

    Keyboard &keyboard() override { return m_keyboard; }
    Pointer &pointer() override { return m_pointer; }
    Windows &windows() override { return m_windows; }

private:
    // The ports behind these are asked for when they are first used: making some takes time.
    class GatedKeyboard final : public Keyboard
    {
    public:
        GatedKeyboard(Platform &inner, InputGate &gate)
            : m_inner(inner)
            , m_gate(gate)
        {
        }
        void keyEvent(quint8 virtualKey, quint32 flags) override;
        bool typeText(QStringView text, const BeforeCharacter &before) override;
        void releaseAll() override { m_inner.keyboard().releaseAll(); }

    private:
        Platform &m_inner;
        InputGate &m_gate;
    };

    class GatedPointer final : public Pointer
    {
    public:
        GatedPointer(Platform &inner, InputGate &gate)
            : m_inner(inner)
            , m_gate(gate)
        {
        }
        QPoint position() override { return m_inner.pointer().position(); }
        bool isAskedUnseen() const override { return m_inner.pointer().isAskedUnseen(); }
        void moveTo(QPoint point) override;
        void buttonEvent(quint32 flags) override;
        void releaseAll() override { m_inner.pointer().releaseAll(); }

    private:
        Platform &m_inner;
        InputGate &m_gate;
    };

    // Tells the gate which window a run has brought to the front, and which it has put away.
    class GatedWindows final : public WrappedWindows
    {
    public:
        GatedWindows(Platform &inner, InputGate &gate)
            : WrappedWindows(inner)
            , m_gate(gate)
        {
        }
        void close(WindowHandle window) override;
        void activate(WindowHandle window) override;
        void hide(WindowHandle window) override;
        void show(WindowHandle window) override;
        void minimise(WindowHandle window) override;
        void moveTo(WindowHandle window, QPoint corner) override;

    private:
        void noteFront();

        InputGate &m_gate;
    };

    GatedKeyboard m_keyboard;
    GatedPointer m_pointer;
    GatedWindows m_windows;
};

} // namespace plum
