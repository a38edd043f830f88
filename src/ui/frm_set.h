#pragma once

#include "look/borderless_window.h"
#include "ui/editing/held_line.h"
#include "ui/main_panel.h"

#include <QPointer>

#include <memory>
#include <vector>

class QShortcut;

namespace plum {

class AppFaces;
class AppLists;
class EditPanel;
class ManualWindow;
class RenamePanel;
class ScriptVocabulary;
class moveit;

// The launcher window `frmSet`: a keyword box over two app lists, and a panel each for writing and for
// renaming an app. It shows and filters; what an action does is decided by whoever listens.
class frmSet final : public BorderlessWindow
{
    Q_OBJECT

public:
    frmSet(AppLists &lists, AppFaces &faces, const ScriptVocabulary &vocabulary);

    // The main panel, with the caret at the end of the keyword box.
    void showMainPanel();
    void showEditPanel();
    void showRenamePanel();

    // Before it is shown: where the pointer is, and no larger than that screen.
    void comeToPointer();

    // Both are made when they are first asked for; the start does not pay for them.
    EditPanel &editPanel();
    RenamePanel &renamePanel();

    // Of the main panel.
    QString keywordBoxText() const { return okbox->typedText(); }
    void focusKeywordBox() { okbox->focusKeywordBox(); }
    void bringListToFront() { okbox->bringListToFront(); }
    void refilter() { okbox->refilter(); }
    void startAnew() { okbox->startAnew(); }
    QString keywordAtHand() const { return okbox->keywordAtHand(); }
    QString selectedKeyword() const { return okbox->selectedKeyword(); }
    Footer &footer() { return okbox->footer(); }

    // While it is so, Enter has the run that waits go on, wherever the keyboard is in this window.
    void setWaitsForHand(bool waits);

    void showKeys();
    void showManual();

    // The edit panel when it is the one that is shown.
    EditPanel *shownEditPanel() const;

Q_SIGNALS:
    void firstPainted();
    void runFromKeywordBox(const QString &keyword);
    void runFromList(const QString &keyword);
    void runFromList2(const QString &keyword);
    void listMenuRequested(QPoint globalPosition);
    void editDotScriptRequested(const QString &keyword);
    void packageDropped(const QString &path);
    void fileDroppedOnKeywordBox(const QString &path);
    void settingsMenuRequested(QPoint globalPosition);
    void hotkeyRequested();
    void updatesRequested();
    void newAppRequested(const QString &keyword);
    void editRequested(const QString &keyword);
    void renameRequested(const QString &keyword);
    void deleteRequested(const QString &keyword);
    void hideRequested();
    void goOnRequested(); // without waiting for the hand
    void stopRequested(); // of what runs
    void stoppedLineRequested(); // where the last run was stopped
    void whatHappenedRequested(); // in the last run
    void storeRequested();
    void exitRequested();
    void saveRequested(); // of the edit panel
    void runEditedRequested();
    void pickRequested();
    void followRequested(plum::FollowFrom from);
    void leaveEditorRequested();
    void filesDroppedOnEditor(const QStringList &paths);
    void renameConfirmed();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void connectMainPanel();
    void showPanel(QWidget *panel);
    QWidget *shownPanel() const;
    void goBack();
    void openSettingsMenu(QPoint globalPosition);

    const ScriptVocabulary &m_vocabulary;
    moveit *m_mover;
    bool m_hasPainted = false;
    std::vector<QShortcut *> m_goOnKeys; // made when they are first needed
    MainPanel *okbox;
    EditPanel *addeditbox = nullptr;
    RenamePanel *editnamebox = nullptr;
    QPointer<ManualWindow> m_manual; // while it is open
};

} // namespace plum
