#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QPoint;

namespace plum {

class AppActions;
class AppLibrary;
class Autostart;
class LauncherSummons;
class Shell;
class frmSet;
class sett;
enum class MenuCommand;

// What the items of the launcher's menus do. The menus themselves, `sett`, are made when they are first asked
// for.
class LauncherMenus final : public QObject
{
    Q_OBJECT

public:
    // The hosts of the pages that the menus open, without a slash at the end.
    struct Sites
    {
        QString product;
        QString forum;
    };

    struct Needs
    {
        frmSet &window;
        AppActions &actions;
        LauncherSummons &summons;
        AppLibrary &appLibrary;
        Shell &shell;
        Sites sites;
        bool registersComponents = false;
        Autostart &autostart;
        std::function<void(const QString &keyword)> tellSheet; // shows what an app may do
    };

    explicit LauncherMenus(Needs needs);
    ~LauncherMenus() override;
    Q_DISABLE_COPY_MOVE(LauncherMenus)

    sett &menus();
    sett *madeMenus() const { return m_menus.get(); } // null before they were asked for

Q_SIGNALS:
    void hideRequested();
    void stopRequested(); // of what runs
    void whatHappenedRequested(); // in the last run
    void exitRequested(); // through the launcher's exit routine
    void endRequested(); // of the process, at once

private:
    void popUpSettings(QPoint position);
    void popUpOfList(QPoint position);
    void choose(MenuCommand command);
    void openPage(const QString &address);
    void switchAutostart();

    Needs m;
    std::unique_ptr<sett> m_menus;
};

} // namespace plum
