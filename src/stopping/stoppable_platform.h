#pragma once

#include "platform/javascript.h"
#include "platform/keyboard.h"
#include "platform/pointer.h"
#include "platform/stop_signal.h"
#include "platform/waitable_timers.h"
#include "platform/wrapped_platform.h"

namespace plum {

// A platform on which runs can be stopped: no key or button event is sent and no wait goes on once the signal
// is raised; the run is left with RunStopped instead. JavaScript that is being evaluated is given up.
class StoppablePlatform final : public WrappedPlatform
{
public:
    StoppablePlatform(Platform &inner, StopSignal &stop)
        : WrappedPlatform(inner)
        , m_keyboard(inner, stop)
        , m_pointer(inner, stop)
        , m_timers(inner, stop)
        , m_javaScript(inner, stop)
    {
    }

    JavaScript &javaScript() override { return m_javaScript; }
    Keyboard &keyboard() override { return m_keyboard; }
    Pointer &pointer() override { return m_pointer; }
    WaitableTimers &timers() override { return m_timers; }

private:
    // The ports behind these are asked for when they are first used: making some takes time.
    class StoppableKeyboard final : public Keyboard
    {
    public:
        StoppableKeyboard(Platform &inner, StopSignal &stop)
            : m_inner(inner)
            , m_stop(stop)
        {
        }
        ~StoppableKeyboard() override;
        Q_DISABLE_COPY_MOVE(StoppableKeyboard)

        void keyEvent(quint8 virtualKey, quint32 flags) override;
        bool typeText(QStringView text, const BeforeCharacter &before) override;
        void releaseAll() override { m_inner.keyboard().releaseAll(); }

    private:
        Keyboard &stoppable();

        Platform &m_inner;
        StopSignal &m_stop;
        Keyboard *m_stopped = nullptr; // that of `m_inner`, once it knows the signal
    };

    class StoppablePointer final : public Pointer
    {
    public:
        StoppablePointer(Platform &inner, const StopSignal &stop)
            : m_inner(inner)
            , m_stop(stop)
        {
        }
        QPoint position() override { return m_inner.pointer().position(); }
        bool isAskedUnseen() const override { return m_inner.pointer().isAskedUnseen(); }
        void moveTo(QPoint point) override;
        void buttonEvent(quint32 flags) override;
        void releaseAll() override { m_inner.pointer().releaseAll(); }

    private:
        Platform &m_inner;
        const StopSignal &m_stop;
    };

    class StoppableTimers final : public WaitableTimers
    {
    public:
        StoppableTimers(Platform &inner, const StopSignal &stop)
            : m_inner(inner)
            , m_stop(stop)
        {
        }
        Created create(const QString &name) override { return m_inner.timers().create(name); }
        void set(Handle timer, qint64 dueTime) override { m_inner.timers().set(timer, dueTime); }
        bool waitOrPump(Handle timer) override;
        void close(Handle timer) override { m_inner.timers().close(timer); }

    private:
        Platform &m_inner;
        const StopSignal &m_stop;
    };

    class StoppableJavaScript final : public JavaScript
    {
    public:
        StoppableJavaScript(Platform &inner, StopSignal &stop);
        Result evaluate(const QString &program) override;
        void giveUp() override { m_inner.javaScript().giveUp(); }

    private:
        Platform &m_inner;
        const StopSignal &m_stop;
        QObject m_listener;
    };

    StoppableKeyboard m_keyboard;
    StoppablePointer m_pointer;
    StoppableTimers m_timers;
    StoppableJavaScript m_javaScript;
};

} // namespace plum
