#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QWidget;

namespace plum {

class AppLibrary;
class Shell;
class shurubox;

// Asks the user through the input box, one question at a time: a new one takes the place of an open one.
class Questions final : public QObject
{
    Q_OBJECT

public:
    // `owner` is the window that the box belongs to; null while there is none to be seen.
    Questions(Shell &shell, const AppLibrary &library, std::function<QWidget *()> owner);
    ~Questions() override;
    Q_DISABLE_COPY_MOVE(Questions)

    void showInput(const QString &prompt, const QString &variable);
    void showTip(const QString &text);

    // Asks for the keyword of a package.
    void askPackageName(const QString &keyword, const QString &package);

    // Says under an open tip what its keys do.
    void explainTip(const QString &keys);

    bool isAsking() const;

    // The text of the open box's entry; empty without a box.
    QString entryText() const;

Q_SIGNALS:
    void inputConfirmed(const QString &variable, const QString &text);
    void inputClosed();
    void nameConfirmed(const QString &name, bool isFree); // `isFree`: nothing has this name yet
    void abandoned(); // the box was left without an answer

private:
    shurubox &freshBox();

    Shell &m_shell;
    const AppLibrary &m_library;
    std::function<QWidget *()> m_owner;
    QPointer<shurubox> m_box;
};

} // namespace plum
