#include "ui/sett.h"

#include "look/app_icon.h"
#include "look/theme.h"

#include <QCoreApplication>
#include <QCursor>

#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

enum Menu : quint32 {
    Tray = 1,
    Settings = 2,
    AppList = 4,
    Tools = 8, // the sub-menu `toolsa`
};

struct Item
{
    const char *name;
    const char *caption;
    MenuCommand command;
    quint32 menus;
    bool startsGroup = false;
};

constexpr const char *toolsCaption = QT_TRANSLATE_NOOP("plum::sett", "On the web");
constexpr const char *backCaption = QT_TRANSLATE_NOOP("plum::sett", "Back to version %1");

constexpr std::array items{
    Item{"xianshi", QT_TRANSLATE_NOOP("plum::sett", "Show launcher"), MenuCommand::xianshi, Tray},
    Item{"yctp", QT_TRANSLATE_NOOP("plum::sett", "Hide launcher"), MenuCommand::yctp, Tray},
    Item{"editok", QT_TRANSLATE_NOOP("plum::sett", "Edit script"), MenuCommand::editok, AppList},
    Item{"editname", QT_TRANSLATE_NOOP("plum::sett", "Rename"), MenuCommand::editname, AppList},
    Item{"openthisfold", QT_TRANSLATE_NOOP("plum::sett", "Open folder"), MenuCommand::openthisfold, AppList},
    Item{"shuoming", QT_TRANSLATE_NOOP("plum::sett", "Guide"), MenuCommand::shuoming, AppList},
    Item{"goBack", backCaption, MenuCommand::goBack, AppList},
    Item{"maydo", QT_TRANSLATE_NOOP("plum::sett", "What may it do?"), MenuCommand::mayDo, AppList},
    Item{"delthis", QT_TRANSLATE_NOOP("plum::sett", "Delete"), MenuCommand::delthis, AppList, true},
    Item{"addnew", QT_TRANSLATE_NOOP("plum::sett", "New app"), MenuCommand::addnew, Settings | AppList, true},
    Item{"rjsz", QT_TRANSLATE_NOOP("plum::sett", "Hotkey"), MenuCommand::rjsz, Tray | Settings, false},
    Item{"autostart", QT_TRANSLATE_NOOP("plum::sett", "Start when I log in"), MenuCommand::autostart,
        Settings},
    Item{"lookagain", QT_TRANSLATE_NOOP("plum::sett", "Look again"), MenuCommand::lookAgain, Settings},
    Item{"fixit", QT_TRANSLATE_NOOP("plum::sett", "Repair dialogs"), MenuCommand::fixit, Settings},
    Item{"gfwz", QT_TRANSLATE_NOOP("plum::sett", "Product page"), MenuCommand::gfwz, Tools},
    Item{"discuss", QT_TRANSLATE_NOOP("plum::sett", "Discussion"), MenuCommand::discuss, Tools},
    Item{"funcstore", QT_TRANSLATE_NOOP("plum::sett", "Wishes"), MenuCommand::funcstore, Tools},
    Item{"about", QT_TRANSLATE_NOOP("plum::sett", "About Plum"), MenuCommand::about, Tools, true},
    Item{"offs", QT_TRANSLATE_NOOP("plum::sett", "Product page"), MenuCommand::offs, Tray},
    Item{"whathappened", QT_TRANSLATE_NOOP("plum::sett", "What happened?"), MenuCommand::whatHappened,
        Tray | Settings},
    Item{"manual", QT_TRANSLATE_NOOP("plum::sett", "Manual (F1)"), MenuCommand::manual, Settings, true},
    Item{"keys", QT_TRANSLATE_NOOP("plum::sett", "Keys (Shift+F1)"), MenuCommand::keys, Settings},
    Item{"tuichu", QT_TRANSLATE_NOOP("plum::sett", "Exit"), MenuCommand::tuichu, Settings, true},
    Item{"stop", QT_TRANSLATE_NOOP("plum::sett", "Stop"), MenuCommand::stop, Tray, true},
    Item{"guanbi", QT_TRANSLATE_NOOP("plum::sett", "End at once"), MenuCommand::guanbi, Tray},
};

} // namespace

sett::sett(bool registersComponents)
    : m_registersComponents(registersComponents)
{
    cd.setObjectName(u"cd"_s);
    cd.setAccessibleName(tr("Menu of the tray icon"));
    mmmm.setObjectName(u"mmmm"_s);
    mmmm.setAccessibleName(tr("Settings"));
    list2you.setObjectName(u"list2you"_s);
    list2you.setAccessibleName(tr("Menu of the app"));
    fill(cd, Tray);
    fill(list2you, AppList);
    setVersionBefore({});
    fill(mmmm, Settings);

    QMenu *toolsa = mmmm.addMenu(tr(toolsCaption));
    toolsa->setObjectName(u"toolsa"_s);
    fill(*toolsa, Tools);
    // The sub-menu stands before the way out and its separator.
    mmmm.insertMenu(mmmm.actions().at(mmmm.actions().size() - 3), toolsa);
}

sett::~sett()
{
    removeTrayIcon();
}

void sett::fill(QMenu &menu, quint32 which)
{
    for (const Item &item : items) {
        if (!(item.menus & which) || (item.command == MenuCommand::fixit && !m_registersComponents))
            continue;
        if (item.startsGroup && !menu.isEmpty())
            menu.addSeparator();
        QAction *action = menu.addAction(tr(item.caption));
        action->setObjectName(QLatin1StringView(item.name));
        action->setCheckable(item.command == MenuCommand::autostart);
        connect(action, &QAction::triggered, this,
            [this, command = item.command] { Q_EMIT commandChosen(command); });
    }
}

void sett::setVersionBefore(const QString &version)
{
    auto *action = list2you.findChild<QAction *>(u"goBack"_s);
    // "&" would mark the letter behind it.
    action->setText(tr(backCaption).arg(QString(version).replace(u'&', "&&"_L1)));
    action->setVisible(!version.isEmpty());
}

void sett::setAutostart(bool isOn)
{
    mmmm.findChild<QAction *>(u"autostart"_s)->setChecked(isOn);
}

void sett::setTheme(const Theme &theme)
{
    for (QMenu *menu : {&cd, &mmmm, &list2you})
        menu->setStyleSheet(theme.styleSheet());
}

void sett::addTrayIcon()
{
    m_tray = std::make_unique<QSystemTrayIcon>(appIcon());
    m_tray->setObjectName(u"tray"_s);
    m_tray->setToolTip(QCoreApplication::applicationName());
    // A tray host may open the menu by itself; a left click always comes here.
    m_tray->setContextMenu(&cd);
    connect(m_tray.get(), &QSystemTrayIcon::activated, this, &sett::trayEvent);
    m_tray->show();
}

void sett::setRunning(const QString &plainText)
{
    if (!m_tray)
        return;
    m_running = plainText;
    showToolTip();
    if (m_showsRun != plainText.isEmpty())
        return;
    m_showsRun = !plainText.isEmpty();
    m_tray->setIcon(m_showsRun ? runningIcon() : appIcon());
}

void sett::setDownload(const QString &plainText)
{
    m_download = plainText;
    showToolTip();
}

void sett::showToolTip()
{
    if (!m_tray)
        return;
    const QString name = QCoreApplication::applicationName();
    const QString &text = m_running.isEmpty() ? m_download : m_running;
    m_tray->setToolTip(text.isEmpty() ? name : name + u": "_s + text);
}

void sett::removeTrayIcon()
{
    if (!m_tray)
        return;
    m_tray->hide();
    m_tray->setContextMenu(nullptr);
}

void sett::trayEvent(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger || (reason == QSystemTrayIcon::Context && !cd.isVisible()))
        cd.popup(QCursor::pos());
}

} // namespace plum
