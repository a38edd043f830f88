#pragma once

#include "look/borderless_window.h"

#include <QPointer>

#include <memory>

class QStackedLayout;

namespace plum {

class AppFaces;
class AppLists;
class EditPanel;
class Footer;
class FileEntry;
class KeywordList;
class ManualWindow;
class RenamePanel;
class ScriptVocabulary;
class moveit;

// Which of the two lists the user pointed at last.
enum class ListMarker {
    List = 0,
    List2 = 2,
};

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

    QString keywordBoxText() const;
    void focusKeywordBox();

    void bringListToFront();

    // The lists have changed: what is typed filters them again.
    void refilter();

    // `List` in front, and the typed text selected, so that the next key filters anew.
    void startAnew();

    // The app that keys in the main panel act on: the selected one of the list that has the keyboard, else
    // the one that Enter in the keyword box would run.
    QString keywordAtHand() const;

    // The current text of the list that the marker names.
    QString selectedKeyword() const;

    void showKeys();
    void showManual();

    // The line under the lists.
    Footer &footer() { return *m_footer; }

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
    void stopRequested(); // of what runs
    void stoppedLineRequested(); // where the last run was stopped
    void storeRequested();
    void exitRequested();
    void saveRequested(); // of the edit panel
    void runEditedRequested();
    void leaveEditorRequested();
    void filesDroppedOnEditor(const QStringList &paths);
    void renameConfirmed();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *makeMainPanel(AppFaces &faces);
    void connectList(KeywordList &list, ListMarker marker);
    void showPanel(QWidget *panel);
    QWidget *shownPanel() const;
    void filter();
    void makeShortcuts(QWidget &panel);
    void goBack();
    void updateMark();
    QString keywordOfEnter() const;
    void runFirst();
    void moveIntoList();
    void openSettingsMenu(QPoint globalPosition);
    void showMatches();

    AppLists &m_lists;
    const ScriptVocabulary &m_vocabulary;
    moveit *m_mover;
    bool m_hasPainted = false;
    ListMarker m_marker = ListMarker::List;
    KeywordList *List; // all keywords
    KeywordList *List2; // the keywords that match; in front of `List` when filtering
    FileEntry *Text8; // the keyword box
    Footer *m_footer;
    QStackedLayout *m_stack;
    QWidget *okbox; // the main panel
    EditPanel *addeditbox = nullptr;
    RenamePanel *editnamebox = nullptr;
    QPointer<ManualWindow> m_manual; // while it is open
};

} // namespace plum
