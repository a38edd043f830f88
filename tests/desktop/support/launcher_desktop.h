#pragma once

#include "desktop/support/desktop_test.h"
#include "desktop/support/eyes.h"
#include "desktop/support/hands.h"

namespace plum {

// A desktop with the real launcher in a program folder of its own, seen from outside by the names of its
// controls and worked with real keys and a real mouse.
class LauncherDesktop : public DesktopTest
{
protected:
    void SetUp() override { prepare(QStringLiteral("openbox")); }
    void TearDown() override;

    // The desktop, and a program folder whose hotkey is Alt+Z.
    void prepare(const QString &windowManager, QSize screen = {1280, 900});

    // The file of the program.
    virtual QString program() const { return QStringLiteral(PLUM_PROGRAM); }

    QString programFolder() const { return folder() + QStringLiteral("/program"); }

    // Writes a file below the program folder.
    void write(const QString &name, const QByteArray &content);

    void writeProgram(const QString &name, const QByteArray &content);

    // An app whose script has these lines.
    void writeApp(const QString &keyword, const QStringList &lines = {});

    // The content of a file below the program folder; empty when there is none.
    QByteArray read(const QString &name) const;

    // A script's line that appends `value` (an argument) to result.txt, and what stands there.
    QString resultLine(const QString &value) const;
    QByteArray results() const { return read(QStringLiteral("result.txt")); }

    // Starts the program and waits until it can be looked at.
    void startProgram(const QStringList &arguments = {});

    // Starts the launcher and waits until it is shown and the keyword box has the keyboard.
    void startLauncher();

    // Waits for an end by itself, which has to be a good one.
    void expectGoodEnd();
    bool isRunning() const { return m_launcher.state() == QProcess::Running; }
    QProcess &launcher() { return m_launcher; }

    // By "window/name".
    Control see(const QString &path) { return m_eyes->see(path); }
    bool isShown(const QString &path) { return see(path).shown; }

    // Both the program and the server say so: then keys go there.
    bool hasFocus(const QString &path);
    QString focused(); // the path of what has the keyboard
    QString textOf(const QString &path) { return see(path).text; }

    // Wait until it is so.
    bool appears(const QString &path)
    {
        return eventually([&] { return isShown(path); });
    }
    bool disappears(const QString &path)
    {
        return eventually([&] { return !isShown(path); });
    }
    bool getsFocus(const QString &path)
    {
        return eventually([&] { return hasFocus(path); });
    }
    bool shows(const QString &path, const QString &text)
    {
        return eventually([&] { return textOf(path) == text; });
    }
    bool lists(const QString &path, const QStringList &items)
    {
        return eventually([&] { return see(path).items == items; });
    }

    // Waits until the control is shown and still.
    Control stillControl(const QString &path);

    // The same, and clicks into its middle.
    void click(const QString &path, Hands::Button button = Hands::Left);

    // The same, and waits until the control has the keyboard.
    void clickInto(const QString &path);

    // The middle of the row with that text, once it is shown and still.
    QPoint rowOf(const QString &path, const QString &item);

    // Opens the menu of the app in `List` and chooses an item.
    void chooseForApp(const QString &keyword, const QString &item);

    // Waits for a message of exactly this text and closes it with its button.
    void answer(const QString &text, const QString &button = QStringLiteral("OK"));

    // Waits for a script's question, types the answer and confirms it.
    void answerQuestion(const QString &prompt, const QString &text);

    // Waits for the dialog about that package and clicks on Install.
    void agreeToInstall(const QString &keyword);

    // Drags a window of the launcher by a place of its background, and waits until it follows the hand.
    void dragWindow(const QString &name, QPoint grip, QPoint way);

    // Empties the keyword box with keys; it has the keyboard already.
    void clearEntry();

    // What was handed to the desktop to be opened, a line each.
    QStringList opened() const;

    std::optional<Hands> hands;

private:
    void tellOfFailure();

    QProcess m_launcher;
    int m_starts = 0;
    std::optional<Eyes> m_eyes;
};

} // namespace plum
