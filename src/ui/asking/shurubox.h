#pragma once

#include "look/borderless_window.h"

#include <functional>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QStackedWidget;

namespace plum {

class FileEntry;
class PictureButton;
class Shell;

// The input box: one small window with a panel for each use. Every confirming or closing action closes it
// first and reports afterwards; a closed box deletes itself, so each use starts from a fresh one.
class shurubox final : public BorderlessWindow
{
    Q_OBJECT

public:
    // What the box asks of the library.
    struct Library
    {
        std::function<bool(const QString &keyword)> exists;
        std::function<QString(const QString &keyword)> faultOf; // a sentence; empty for none
    };

    shurubox(Shell &shell, Library library, QWidget *owner);

    void showInput(const QString &prompt, const QString &variable);
    void showTip(const QString &text);

    // Says in small print under the tip what its keys do; nothing hides the line.
    void explainKeys(const QString &text);

    // Asks for the keyword under which `package` is to be installed.
    void showName(const QString &keyword, const QString &package);

    // The entry's text; empty when another panel is in front.
    QString entryText() const;

Q_SIGNALS:
    void unloaded(); // by whatever way; comes before the signal that says which
    void inputConfirmed(const QString &variable, const QString &text);
    void inputClosed(); // by the close picture
    void dismissed(bool withEnter, const QString &variable, const QString &text); // in any other way
    void nameConfirmed(const QString &name); // the name is free
    void nameConfirmedUnchecked(const QString &name);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeInputPanel();
    QWidget *makeTipPanel();
    QWidget *makeNamePanel();
    QWidget *makeSetupPanel();
    void bringUp(QWidget *panel);
    void confirmInput();
    void closeInput();
    void confirmName();
    void tell(const QString &fault, const QString &meaning = {});
    void tellTaken(const QString &name);

    void answered();

    Shell &m_shell;
    Library m_library;
    QStackedWidget *m_panels;
    PictureButton *Image1; // closes a question or a tip, and the run goes on
    QWidget *m_inputPanel; // `shurubox`
    QWidget *m_tipPanel;
    QWidget *renamebox;
    QWidget *setupbox; // what is going to be installed, and where from
    QLabel *title; // the prompt
    QLabel *indim; // the name of the variable that receives the input; never visible
    FileEntry *Text1; // the entry
    QPlainTextEdit *tipsbox; // the tip
    QLabel *m_keys; // what the keys do
    QLineEdit *Text4; // the keyword for a package
    QLabel *Label6; // says that a keyword is taken
    QLabel *m_meaning; // the same beside it, in a language that is not English
    QLineEdit *Text2; // the package
    QLineEdit *Text3; // the keyword that it would have
    bool m_isAnswered = false;
    bool m_isEnterPressed = false;
};

} // namespace plum
