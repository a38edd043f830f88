#include "ui/launcher_summons.h"

#include "platform/desktop_windows.h"
#include "platform/global_hotkey.h"
#include "ui/controls/footer.h"
#include "ui/controls/rich_link.h"
#include "ui/frm_set.h"
#include "ui/hotkey_window.h"

#include <QApplication>
#include <QWindow>

#include <chrono>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto focusPatience = 150ms;

} // namespace

LauncherSummons::LauncherSummons(const Needs &needs)
    : m(needs)
    , m_module(m.hotkey)
{
    m_insists.setSingleShot(true);
    m_insists.setInterval(focusPatience);
    connect(&m_insists, &QTimer::timeout, this, &LauncherSummons::insistOnFocus);
    connect(&m_module, &sethotkey::fired, this, &LauncherSummons::toggle);
    connect(&m_module, &sethotkey::registrationChanged, this, &LauncherSummons::showHint);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &LauncherSummons::noteSeen);
}

LauncherSummons::~LauncherSummons()
{
    m_module.disconnect(this);
    delete m_hotkeyWindow;
}

void LauncherSummons::startHotkey()
{
    if (!m.settings.exists())
        return;
    m_module.hotkeyText = m.settings.ReadSetting(u"hotkey"_s, u"hotkey"_s);
    makeHotkeyWindow();
    m_hotkeyWindow->SetNew(hotkey::Register);
}

void LauncherSummons::showAndActivate()
{
    m.window.comeToPointer();
    m.window.show();
    m.window.raise();
    m.window.activateWindow();
    m.window.focusKeywordBox();
    // A window that is hidden and shown again within a moment never lost the keyboard for Qt, which therefore
    // does not tell it that it is active again.
    if (QGuiApplication::focusWindow() == m.window.windowHandle() && !QApplication::activeWindow())
        QApplication::setActiveWindow(&m.window);
    m_insists.start();
}

WindowHandle LauncherSummons::comeForward()
{
    const WindowHandle front = m.windows.foreground();
    if (front != 0 && m.window.isVisible() && front == m.windows.own(m.window.winId()))
        return 0;
    showAndActivate();
    return front;
}

void LauncherSummons::giveWay(WindowHandle window)
{
    m_insists.stop();
    if (window != 0)
        m.windows.activate(window);
}

// A window manager that guards the focus has to be asked by the system's own means. That call waits for its
// answer, so it comes only when the window has been painted and is still not active.
void LauncherSummons::insistOnFocus()
{
    noteSeen();
    if (m.window.isVisible() && !QApplication::activeWindow())
        m.windows.activate(m.windows.own(m.window.winId()));
}

// The launcher has been shown once, to somebody who may from now on want it to go.
void LauncherSummons::noteSeen()
{
    if (m.window.isVisible() && !m_seenSince)
        m_seenSince = m.hotkey.now();
}

// Whether a press of that time found the launcher shown: while it starts nobody has seen it, and on another
// virtual desktop nobody sees it.
bool LauncherSummons::isOnScreen(quint32 time)
{
    return m.window.isVisible() && m_seenSince && static_cast<qint32>(time - *m_seenSince) > 0
        && m.windows.isOnScreen(m.windows.own(m.window.winId()));
}

void LauncherSummons::toggle(quint32 time)
{
    const auto window = m.windows.own(m.window.winId());
    if (isOnScreen(time)) {
        m.window.hide();
        m.hotkey.takeKeysFrom(window);
        return;
    }
    fetch();
    m.hotkey.giveKeysTo(window);
}

void LauncherSummons::fetch()
{
    if (m.window.isVisible())
        m.windows.bringHere(m.windows.own(m.window.winId()));
    showAndActivate();
}

void LauncherSummons::showHint()
{
    if (m_module.isRegistered() && !m_module.isBareLetter()) {
        m.window.footer().setStanding({});
        return;
    }
    const bool isChosen = m_module.isRegistered() || m_module.isTaken();
    const QString state = m_module.isBareLetter()
        ? tr("The key %1 alone shows Plum, so nobody can type it.").arg(m_module.keys())
        : m_module.isTaken()
        ? tr("%1 belongs to another program, maybe another Plum. Plum takes it when it is free.")
              .arg(m_module.keys())
        : tr("No hotkey yet.");
    const QString link = isChosen ? tr("Choose another one") : tr("Choose one");
    m.window.footer().setStanding(state + richLink(u"hotkey"_s, link));
}

void LauncherSummons::makeHotkeyWindow()
{
    if (m_hotkeyWindow)
        return;
    m_hotkeyWindow = new hotkey(m_module, m.settings, &m.window);
    connect(m_hotkeyWindow, &hotkey::confirmed, this,
        [this] { m.window.footer().say(tr("%1 shows Plum").arg(m_module.keys())); });
    connect(m_hotkeyWindow, &hotkey::unloaded, m_hotkeyWindow, &QObject::deleteLater);
    connect(m_hotkeyWindow, &hotkey::unloaded, this, [this] { m_hotkeyWindow.clear(); });
}

void LauncherSummons::showHotkeyWindow()
{
    makeHotkeyWindow();
    m_hotkeyWindow->resize(m_hotkeyWindow->fitting(m_hotkeyWindow->sizeHint()));
    m_hotkeyWindow->wincenter();
    m_hotkeyWindow->show();
    m_hotkeyWindow->raise();
    m_hotkeyWindow->activateWindow();
}

} // namespace plum
