// The part of `LauncherUi` that carries out menu commands and the panels they open.

#include "ui/launcher_ui.h"

#include "engine/run_state.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/rename_panel.h"
#include "ui/frm_set.h"
#include "ui/hotkey_window.h"
#include "ui/sett.h"

namespace plum {

using namespace Qt::StringLiterals;

void LauncherUi::choose(MenuCommand command)
{
    const QString selected = m_window->selectedKeyword();
    switch (command) {
    case MenuCommand::addnew:
        openAddPanel();
        break;
    case MenuCommand::editok:
        editApp(selected);
        break;
    case MenuCommand::editname:
        renameApp(selected);
        break;
    case MenuCommand::delthis:
        deleteApp(selected);
        break;
    case MenuCommand::openthisfold:
        m_library.OpenAppFolder(selected);
        break;
    case MenuCommand::shuoming:
        showGuide(selected);
        break;
    case MenuCommand::rjsz:
        showHotkeyWindow();
        break;
    case MenuCommand::xianshi:
        showAndActivate();
        break;
    case MenuCommand::yctp:
        hideLauncher();
        break;
    case MenuCommand::tuichu:
        exit();
        break;
    case MenuCommand::guanbi:
        endProcess();
        break;
    case MenuCommand::fixit:
        m.platform.shell().open(u"regsvr32"_s,
            m.platform.paths().programFolder() + u"\\config\\settings\\fix\\COMDLG32.OCX /s"_s,
            ShowState::Minimised);
        break;
    case MenuCommand::about:
        openPage(m.sites.product + u"/plum/index.html?v=0.01"_s);
        break;
    case MenuCommand::gfwz:
    case MenuCommand::offs:
        openPage(m.sites.product + u"/products/tarnwick_plum/index.html?v=0.01"_s);
        break;
    case MenuCommand::discuss:
    case MenuCommand::funcstore:
        openPage(m.sites.forum + u"/topic/tarnwick_plum/"_s);
        break;
    }
}

void LauncherUi::openPage(const QString &address)
{
    m.platform.shell().open(address, {}, ShowState::Normal);
}

void LauncherUi::openAddPanel()
{
    m_window->editPanel().openForAdding();
    m_window->showEditPanel();
}

void LauncherUi::editApp(const QString &keyword)
{
    m_window->editPanel().openForEditing(keyword, m_library.scriptText(keyword, u"main.wf"_s));
    m_window->showEditPanel();
}

void LauncherUi::editDotScript(const QString &keyword)
{
    m_state->runctx[0] = m_library.appPath(keyword, u".main.wf"_s);
    m_window->editPanel().openDotScript(keyword, m_library.scriptText(keyword, u".main.wf"_s));
    m_window->showEditPanel();
}

void LauncherUi::renameApp(const QString &keyword)
{
    m_window->renamePanel().open(keyword);
    m_window->showRenamePanel();
}

void LauncherUi::deleteApp(const QString &keyword)
{
    if (!m_library.DeleteApp(keyword))
        return;
    m_faces.forget();
    m_window->bringListToFront();
}

void LauncherUi::showGuide(const QString &keyword)
{
    const AppGuide guide = m_library.guide(keyword);
    switch (guide.kind) {
    case AppGuide::Kind::None:
        showMessage({.text = u"Guide does not exist"_s, .systemModal = true});
        break;
    case AppGuide::Kind::Text:
        showMessage({.text = guide.content});
        break;
    case AppGuide::Kind::Address:
        openPage(guide.content);
        break;
    }
}

// A save or a rename that was refused leaves the panel open, so that nothing typed is lost.
void LauncherUi::saveEdited()
{
    EditPanel &panel = m_window->editPanel();
    bool saved = false;
    switch (panel.mode()) {
    case EditPanel::Mode::Add:
        saved = m_library.CreateApp(panel.keyword(), panel.script());
        break;
    case EditPanel::Mode::Edit:
        saved = m_library.SaveApp(panel.keyword(), panel.script());
        break;
    case EditPanel::Mode::EditDotScript:
        saved = m_library.saveScript(panel.keyword(), u".main.wf"_s, panel.script());
        break;
    }
    if (!saved)
        return;
    m_faces.forget();
    m_window->showMainPanel();
}

void LauncherUi::confirmRename()
{
    RenamePanel &panel = m_window->renamePanel();
    if (!m_library.RenameApp(panel.oldKeyword(), panel.newKeyword()))
        return;
    m_faces.forget();
    m_window->showMainPanel();
}

void LauncherUi::makeHotkeyWindow()
{
    if (m_hotkeyWindow)
        return;
    m_hotkeyWindow = new hotkey(*m_hotkeyModule, m_settings, m_window.get());
    connect(m_hotkeyWindow, &hotkey::unloaded, m_hotkeyWindow, &QObject::deleteLater);
    connect(m_hotkeyWindow, &hotkey::unloaded, this, [this] { m_hotkeyWindow.clear(); });
}

void LauncherUi::showHotkeyWindow()
{
    makeHotkeyWindow();
    m_hotkeyWindow->adjustSize();
    m_hotkeyWindow->wincenter();
    m_hotkeyWindow->show();
    m_hotkeyWindow->raise();
    m_hotkeyWindow->activateWindow();
}

} // namespace plum
