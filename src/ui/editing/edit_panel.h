#pragma once

#include "ui/editing/script_advisor.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace plum {

class PictureButton;
class ScriptEditor;
class ScriptVocabulary;
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
    void back();
    void menuRequested(QPoint globalPosition);
    void filesDropped(const QStringList &paths);

private:
    void open(Mode mode, const QString &caption, const QString &keyword, const QString &script);

    void showFile();
    void beginWithGuide();
    void mendLineEnds();
    void showNote();

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
    QWidget *Image9; // back
};

} // namespace plum
