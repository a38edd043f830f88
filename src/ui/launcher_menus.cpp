#include "ui/launcher_menus.h"

#include "library/app_library.h"
#include "platform/autostart.h"
#include "platform/shell.h"
#include "ui/app_actions.h"
#include "ui/controls/footer.h"
#include "ui/frm_set.h"
#include "ui/launcher_summons.h"
#include "ui/sett.h"

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

LauncherMenus::LauncherMenus(Needs needs)
    : m(std::move(needs))
{
    connect(&m.window, &frmSet::settingsMenuRequested, this, &LauncherMenus::popUpSettings);
    connect(&m.window, &frmSet::listMenuRequested, this, &LauncherMenus::popUpOfList);
}

LauncherMenus::~LauncherMenus() = default;

sett &LauncherMenus::menus()
{
    if (!m_menus) {
        m_menus = std::make_unique<sett>(m.registersComponents);
        m_menus->setTheme(m.window.theme());
        connect(&m.window, &BorderlessWindow::themeChanged, m_menus.get(), &sett::setTheme);
        connect(m_menus.get(), &sett::commandChosen, this, &LauncherMenus::choose);
    }
    return *m_menus;
}

void LauncherMenus::popUpSettings(QPoint position)
{
    menus().setAutostart(m.autostart.isOn());
    menus().mmmm.popup(position);
}

void LauncherMenus::popUpOfList(QPoint position)
{
    menus().setVersionBefore(m.appLibrary.versionBefore(m.window.selectedKeyword()));
    menus().list2you.popup(position);
}

void LauncherMenus::choose(MenuCommand command)
{
    const QString selected = m.window.selectedKeyword();
    switch (command) {
    case MenuCommand::addnew:
        m.actions.addApp();
        break;
    case MenuCommand::editok:
        m.actions.editApp(selected);
        break;
    case MenuCommand::editname:
        m.actions.renameApp(selected);
        break;
    case MenuCommand::goBack:
        m.actions.goBack(selected);
        break;
    case MenuCommand::delthis:
        m.actions.deleteApp(selected);
        break;
    case MenuCommand::openthisfold:
        m.appLibrary.OpenAppFolder(selected);
        break;
    case MenuCommand::shuoming:
        m.actions.showGuide(selected);
        break;
    case MenuCommand::mayDo:
        if (!selected.isEmpty() && m.tellSheet)
            m.tellSheet(selected);
        break;
    case MenuCommand::rjsz:
        m.summons.showHotkeyWindow();
        break;
    case MenuCommand::xianshi:
        m.summons.showAndActivate();
        break;
    case MenuCommand::yctp:
        Q_EMIT hideRequested();
        break;
    case MenuCommand::autostart:
        switchAutostart();
        break;
    case MenuCommand::lookAgain:
        m.actions.lookAgain();
        break;
    case MenuCommand::manual:
        m.window.showManual();
        break;
    case MenuCommand::keys:
        m.window.showKeys();
        break;
    case MenuCommand::tuichu:
        Q_EMIT exitRequested();
        break;
    case MenuCommand::stop:
        Q_EMIT stopRequested();
        break;
    case MenuCommand::whatHappened:
        Q_EMIT whatHappenedRequested();
        break;
    case MenuCommand::guanbi:
        Q_EMIT endRequested();
        break;
    case MenuCommand::fixit:
        m.shell.open(u"regsvr32"_s, m.appLibrary.folders().fixComponent() + u" /s"_s, ShowState::Minimised);
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

void LauncherMenus::switchAutostart()
{
    const bool isWanted = !m.autostart.isOn();
    Footer &footer = m.window.footer();
    if (!m.autostart.setOn(isWanted))
        footer.say(tr("That could not be changed"));
    else
        footer.say(isWanted ? tr("Plum starts when you log in") : tr("Plum does not start when you log in"));
}

void LauncherMenus::openPage(const QString &address)
{
    m.shell.open(address, {}, ShowState::Normal);
}

} // namespace plum
