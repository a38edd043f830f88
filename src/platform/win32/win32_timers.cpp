#include "platform/win32/win32_timers.h"

#include "platform/win32/text/wide_text.h"

#include <QCoreApplication>

#include <qt_windows.h>

namespace plum {

namespace {

constexpr BOOL manualReset = TRUE;

// The system keeps kernel handles within 32 bits.
HANDLE native(WaitableTimers::Handle timer)
{
    return LongToHandle(timer);
}

} // namespace

WaitableTimers::Created Win32Timers::create(const QString &name)
{
    HANDLE timer = CreateWaitableTimerW(nullptr, manualReset, wide(name));
    const bool nameExisted = timer && GetLastError() == ERROR_ALREADY_EXISTS;
    // A name that something else has taken must not take the waits away.
    if (!timer)
        timer = CreateWaitableTimerW(nullptr, manualReset, nullptr);
    return {static_cast<Handle>(HandleToLong(timer)), nameExisted};
}

void Win32Timers::set(Handle timer, qint64 dueTime)
{
    LARGE_INTEGER due;
    due.QuadPart = dueTime;
    SetWaitableTimer(native(timer), &due, 0, nullptr, nullptr, FALSE);
}

bool Win32Timers::waitOrPump(Handle timer)
{
    const HANDLE watched = native(timer);
    const DWORD woken = MsgWaitForMultipleObjectsEx(1, &watched, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    QCoreApplication::processEvents();
    // There is nothing to wait for where the timer is none.
    return woken == WAIT_OBJECT_0 || woken == WAIT_FAILED;
}

void Win32Timers::close(Handle timer)
{
    if (timer != 0)
        CloseHandle(native(timer));
}

} // namespace plum
