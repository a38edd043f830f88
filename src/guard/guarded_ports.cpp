#include "guard/guarded_ports.h"

#include "guard/guard.h"

namespace plum {

QString GuardedClipboard::text()
{
    if (!m_guard->allowsClipboardText())
        return {};
    QString text = m_platform.clipboard().text();
    m_guard->noteClipboard(text);
    return text;
}

void GuardedClipboard::setText(const QString &text)
{
    if (m_guard->allowsSettingClipboard(text))
        m_platform.clipboard().setText(text);
}

void GuardedClipboard::clear()
{
    if (m_guard->allowsClearingClipboard())
        m_platform.clipboard().clear();
}

JavaScript::Result GuardedJavaScript::evaluate(const QString &program)
{
    return m_guard->allows(Effect::Evaluate) ? m_platform.javaScript().evaluate(program) : Result{};
}

void GuardedKeyboard::keyEvent(quint8 virtualKey, quint32 flags)
{
    if ((flags & KeyUp) != 0 || m_guard->allowsKey(virtualKey))
        m_platform.keyboard().keyEvent(virtualKey, flags);
}

bool GuardedKeyboard::typeText(QStringView text, const BeforeCharacter &before)
{
    return m_guard->allowsInput(Effect::Keys) && m_platform.keyboard().typeText(text, before);
}

bool GuardedPaths::mayRead(const QString &systemPath) const
{
    return m_guard->allowsFile(Effect::ReadFile, systemPath);
}

bool GuardedPaths::mayWrite(const QString &systemPath) const
{
    return m_guard->allowsFile(Effect::WriteFile, systemPath);
}

QPoint GuardedPointer::position()
{
    return m_guard->allows(Effect::SeePointer) ? m_platform.pointer().position() : QPoint();
}

void GuardedPointer::moveTo(QPoint point)
{
    if (m_guard->allows(Effect::Mouse))
        m_platform.pointer().moveTo(point);
}

void GuardedPointer::buttonEvent(quint32 flags)
{
    const bool presses = (flags & (LeftDown | RightDown)) != 0;
    if (presses ? m_guard->allowsInput(Effect::Mouse) : m_guard->allows(Effect::Mouse))
        m_platform.pointer().buttonEvent(flags);
}

Capture GuardedScreen::capture(const QRect &region)
{
    return m_guard->allows(Effect::SeeScreen) ? m_platform.screen().capture(region) : Capture();
}

Capture GuardedScreen::capturePlainly(const QRect &region)
{
    return m_guard->allows(Effect::SeeScreen) ? m_platform.screen().capturePlainly(region) : Capture();
}

Session::Outcome GuardedSession::lockScreen()
{
    return m_guard->allows(Effect::LockScreen) ? m_platform.session().lockScreen() : Outcome::Done;
}

Session::Outcome GuardedSession::monitorOff()
{
    return m_guard->allows(Effect::SwitchMonitorOff) ? m_platform.session().monitorOff() : Outcome::Done;
}

Session::Outcome GuardedSession::logOff()
{
    return m_guard->allows(Effect::LogOff) ? m_platform.session().logOff() : Outcome::Done;
}

Session::Outcome GuardedSession::shutDown()
{
    return m_guard->allows(Effect::ShutDown) ? m_platform.session().shutDown() : Outcome::Done;
}

Session::Outcome GuardedSession::restart()
{
    return m_guard->allows(Effect::Restart) ? m_platform.session().restart() : Outcome::Done;
}

WindowHandle GuardedWindows::foreground()
{
    return m_guard->allows(Effect::SeeWindows) ? m_platform.windows().foreground() : 0;
}

WindowHandle GuardedWindows::underPointer()
{
    return m_guard->allows(Effect::SeeWindows) ? m_platform.windows().underPointer() : 0;
}

WindowHandle GuardedWindows::byTitle(const QString &title)
{
    return m_guard->allowsTitle(title) ? m_platform.windows().byTitle(title) : 0;
}

QString GuardedWindows::title(WindowHandle window)
{
    return m_guard->allows(Effect::SeeWindows) ? m_platform.windows().title(window) : QString();
}

std::vector<WindowHandle> GuardedWindows::stacking()
{
    return m_guard->allows(Effect::SeeWindows) ? m_platform.windows().stacking()
                                               : std::vector<WindowHandle>();
}

bool GuardedWindows::isOnScreen(WindowHandle window)
{
    return m_guard->allows(Effect::SeeWindows) && m_platform.windows().isOnScreen(window);
}

// Whoever changes a window may ask whether it is there.
QRect GuardedWindows::rectangle(WindowHandle window)
{
    return m_guard->allowsAnyOf(Effect::SeeWindows, Effect::ChangeWindows)
        ? m_platform.windows().rectangle(window)
        : QRect();
}

void GuardedWindows::close(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().close(window);
}

void GuardedWindows::activate(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().activate(window);
}

void GuardedWindows::hide(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().hide(window);
}

void GuardedWindows::show(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().show(window);
}

void GuardedWindows::minimise(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().minimise(window);
}

void GuardedWindows::maximise(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().maximise(window);
}

void GuardedWindows::moveTo(WindowHandle window, QPoint corner)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().moveTo(window, corner);
}

void GuardedWindows::bringHere(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().bringHere(window);
}

void GuardedWindows::setTopmost(WindowHandle window)
{
    if (m_guard->allowsWindow(window))
        m_platform.windows().setTopmost(window);
}

} // namespace plum
