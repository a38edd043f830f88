#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>

class QWidget;

namespace plum {

class AppLibrary;
class Shell;
class shurubox;

// Asks the user through the input box, one question at a time. A question takes the place of one of its kind;
// questions of scripts and for the names of packages wait for each other, so that no page and no drop takes
// away what a script is waiting for.
class Questions final : public QObject
{
    Q_OBJECT

public:
    struct Needs
    {
        std::function<QWidget *()> owner; // what the box belongs to; null while there is nothing to be seen
        std::function<QString()> keysOfTip; // what the keys of a tip do; empty when there is nothing to say
    };

    Questions(Shell &shell, const AppLibrary &library, Needs needs);
    ~Questions() override;
    Q_DISABLE_COPY_MOVE(Questions)

    void showInput(const QString &prompt, const QString &variable);
    void showTip(const QString &text);

    // Asks for the keyword of a package.
    void askPackageName(const QString &keyword, const QString &package);

    // Whether the name of a package is being asked for, or will be.
    bool isAskingName() const;

    // A box is open.
    bool isAsking() const;

    // Gives the open box the keyboard, which another window has taken from it.
    void bringForward();

    // Closes the tip or question of a script, if there is one. Nobody hears of it.
    void dropOfScript();
    bool isAskingOfScript() const;

    // The text of the open box's entry; empty without a box.
    QString entryText() const;

Q_SIGNALS:
    void inputConfirmed(const QString &variable, const QString &text);
    void inputClosed();
    // A tip or question of a script has gone in another way: by a key, or by the window manager.
    void dismissed(bool withEnter, const QString &variable, const QString &text);
    void nameConfirmed(const QString &name, bool isFree); // `isFree`: nothing has this name yet

private:
    enum class Kind {
        OfScript,
        Name,
    };
    using Show = std::function<void(shurubox &)>;

    void ask(Kind kind, const Show &show);
    void open(Kind kind, const Show &show);
    void showWaiting();
    shurubox &freshBox();

    Shell &m_shell;
    const AppLibrary &m_library;
    Needs m;
    QPointer<shurubox> m_box;
    Kind m_openKind = Kind::OfScript; // of the open box
    std::optional<Show> m_waitingOfScript;
    std::optional<Show> m_waitingName;
};

} // namespace plum
