#pragma once

#include "ui/editing/held_line.h"
#include "ui/editing/script_advisor.h"

#include <QHash>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace plum {

class PictureButton;
class ScriptEditor;
class ScriptVocabulary;
class StepView;
struct Theme;

// The add and edit panel `addeditbox`: a keyword, a script, and the picture that saves.
class EditPanel final : public QWidget
{
    Q_OBJECT

public:
    EditPanel(const ScriptVocabulary &vocabulary, QWidget *parent);

    QSize sizeHint() const override;

    enum class Mode {
        Add,
        Edit, // the app's script `main.wf`
        EditDotScript, // its second script `.main.wf`, which never runs
        EditFile, // a script that is no app's
    };

    void openForAdding(const QString &keyword = {});
    void openForEditing(const QString &keyword, const QString &script);
    void openDotScript(const QString &keyword, const QString &script);
    void openFile(const QString &systemPath, const QString &script);

    Mode mode() const { return m_mode; }
    QString keyword() const;
    QString script() const;
    void appendScriptLine(const QString &line);

    // What becomes of the text when it is saved; the checker looks at that.
    void checkAs(const ScriptFile &file, const QString &folder);

    // For whom something is picked from the screen.
    Edition edition() const;
    const QString &folder() const { return m_target.folder; }

    // Puts lines below that of the caret, in its place when it is empty, and says something about them.
    void insertLines(const QStringList &lines, const QString &note);

    // Says something under the editor, until the caret goes elsewhere.
    void say(const QString &note);

    // Where the caret is, in characters.
    int caret() const;
    void setCaret(int position);

    // Lines, from 0, before which runs are to be held. Of an app they are remembered while the program runs.
    QList<int> breakpoints() const;

    // The line of the caret, or the next one that runs.
    std::optional<int> runnableLineAtCaret() const;

    // Lines, from 0, as lines of a run, from 1: the file may have line ends that end no line there.
    int runLineOf(int shown) const { return m_target.file.runLineOf(shown); }
    int shownLineOf(int runLine) const { return m_target.file.shownLineOf(runLine); }

    // While a run is followed the script stays as it is.
    void beginFollowing();
    void showHeld(const HeldLine &held);
    void showHeldValues(const HeldLine &held);
    void showGoing();
    void endFollowing();

    // Marks a line, counted from 0, and shows it.
    void showLine(int line);

    // The file that `openFile` has opened.
    const QString &filePath() const { return m_filePath; }

    // Something was typed since the panel was opened.
    bool isModified() const;

    // Says that so many lines end in something that ends no line of a run, and offers to mend them.
    void showOddLineEnds(int count);

    // The user has asked for line ends that a run knows.
    bool mendsLineEnds() const { return m_mendsLineEnds; }

    void takeFocus();
    void setTheme(const Theme &theme);

Q_SIGNALS:
    void saveRequested();
    void runRequested();
    void pickRequested();
    void followRequested(plum::FollowFrom from);
    void followedRunWished(plum::FollowedRunWish wish);
    void heldVariableChanged(const QString &name, const QString &value);
    void scriptLeft(); // the panel shows another one, or goes
    void back();
    void menuRequested(QPoint globalPosition);
    void filesDropped(const QStringList &paths);

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void open(Mode mode, const QString &caption, const QString &keyword, const QString &script);

    void showFile();
    void beginWithGuide();
    void mendLineEnds();
    void showNote();
    void addStepKeys();
    void toggleBreakpoint(int line);
    void keepBreakpoints();

    Mode m_mode = Mode::Add;
    bool m_mendsLineEnds = false;
    QString m_openedKeyword;
    QString m_said; // until the caret moves
    QString m_filePath;
    QLabel *Label5; // what is being edited
    QLineEdit *Text7; // the keyword
    ScriptEditor *Text4; // the script
    QLabel *m_file; // which file is shown
    QLabel *m_lineEnds; // what is odd about them, and what saving does about it
    QLabel *m_note; // about what is marked in the list of suggestions, or was found in the caret's line
    ScriptAdvisor m_advisor;
    ScriptAdvisor::Target m_target;
    PictureButton *m_run = nullptr;
    PictureButton *m_step = nullptr;
    QList<PictureButton *> m_restMeanwhile; // while a run is followed
    StepView *m_stepView; // shown while a run is followed
    QHash<QString, QList<int>> m_breakpoints; // by app; those of the one that is shown are the editor's
    bool m_isFollowing = false;
    QString m_heldWords; // for a screen reader, which gets them with the editor
    QWidget *Image9; // back
};

} // namespace plum
