#pragma once

#include "ui/controls/footer.h"

#include <QWidget>

class QStackedLayout;

namespace plum {

class AppFaces;
class AppLists;
class FileEntry;
class KeywordList;

// Which of the two lists the user pointed at last.
enum class ListMarker {
    List = 0,
    List2 = 2,
};

// The launcher's main panel `okbox`: a keyword box over two app lists. It shows and filters, and tells what
// the user wants done.
class MainPanel final : public QWidget
{
    Q_OBJECT

public:
    MainPanel(AppLists &lists, AppFaces &faces, QWidget *parent);
    ~MainPanel() override;

    QSize sizeHint() const override;

    // The line under the lists.
    Footer &footer() { return *m_footer; }

    QString typedText() const;
    void clearTyped();
    void focusKeywordBox();
    void focusKeywordBoxAtEnd();
    bool isInKeywordBox() const; // the keyboard is

    void bringListToFront();

    // The lists have changed: what is typed filters them again.
    void refilter();

    // `List` in front, and the typed text selected, so that the next key filters anew.
    void startAnew();

    // The app that keys act on: the selected one of the list that has the keyboard, else the one that Enter
    // in the keyword box would run.
    QString keywordAtHand() const;

    // The current text of the list that the marker names.
    QString selectedKeyword() const;

Q_SIGNALS:
    void runFromKeywordBox(const QString &keyword);
    void runFromList(const QString &keyword);
    void runFromList2(const QString &keyword);
    void listMenuRequested(QPoint globalPosition);
    void settingsMenuRequested(QPoint globalPosition);
    void editDotScriptRequested(const QString &keyword);
    void packageDropped(const QString &path);
    void fileDroppedOnKeywordBox(const QString &path);
    void newAppRequested(const QString &keyword);
    void editRequested(const QString &keyword);
    void renameRequested(const QString &keyword);
    void deleteRequested(const QString &keyword);
    void storeRequested();
    void hotkeyRequested();
    void exitRequested();

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    QLayout *makeHead();
    void connectKeywordBox();
    void connectList(KeywordList &list, ListMarker marker);
    void makeShortcuts();
    QString typedKeyword() const;
    void filter();
    void lookForTyped();
    Footer::Hindrance hindrance() const;
    void tellHindrance();
    void updateMark();
    QString keywordOfEnter() const;
    void runFirst();
    void moveIntoList();

    AppLists &m_lists;
    ListMarker m_marker = ListMarker::List;
    KeywordList *List; // all keywords
    KeywordList *List2; // the keywords that match; in front of `List` when filtering
    FileEntry *Text8; // the keyword box
    Footer *m_footer;
    QStackedLayout *m_stack;
};

} // namespace plum
