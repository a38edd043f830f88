#pragma once

#include "look/borderless_window.h"

#include <array>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace plum {

class SettingsFile;
class sethotkey;

// The window `hotkey`, in which the user picks the global hotkey: one modifier and one letter. Closing it
// for good gives the hotkey up; hiding it does not, and neither does closing it by the window manager.
class hotkey final : public BorderlessWindow
{
    Q_OBJECT

public:
    hotkey(sethotkey &module, SettingsFile &settings, QWidget *owner);

    enum RegisterFlag {
        ShowOnly = 0,
        Register = 1,
    };

    // Shows the module's hotkey text in the controls and, with `Register`, registers it anew.
    void SetNew(RegisterFlag flag);

    // Of the modifiers, the letters and the button that closes for good.
    void EnableChoice(bool flag);

Q_SIGNALS:
    void confirmed(); // the chosen hotkey works and is saved
    void unloaded();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose(int index);
    void confirm();
    void toggle();
    void layOut();
    void showState();
    void showWhetherComplete();

    sethotkey &m_module;
    SettingsFile &m_settings;
    bool m_isUnloading = false; // closed by the button that says so
    QString m_modifierName; // empty until a modifier is chosen
    std::array<QRadioButton *, 3> optKey; // Alt, Ctrl, Shift
    QComboBox *cboLetter;
    QPushButton *hotok; // confirms
    std::array<QPushButton *, 2> cmdMain; // switches the hotkey off and on; closes for good
    QPushButton *Command1; // registers
    QPushButton *Command2; // unregisters
    QLabel *Label2; // what became of the registration
};

} // namespace plum
