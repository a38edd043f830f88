#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace plum {

class ScriptEditor;
class ScriptVocabulary;
struct Theme;

// The add and edit panel `addeditbox`: a keyword, a script, and the picture that saves.
class EditPanel final : public QWidget
{
    Q_OBJECT

public:
    EditPanel(const ScriptVocabulary &vocabulary, QWidget *parent);

    enum class Mode {
        Add,
        Edit, // the app's script `main.wf`
        EditDotScript, // its second script `.main.wf`, which never runs
    };

    void openForAdding();
    void openForEditing(const QString &keyword, const QString &script);
    void openDotScript(const QString &keyword, const QString &script);

    Mode mode() const { return m_mode; }
    QString keyword() const;
    QString script() const;
    void appendScriptLine(const QString &line);

    void takeFocus();
    void setTheme(const Theme &theme);

Q_SIGNALS:
    void saveRequested();
    void back();
    void menuRequested(QPoint globalPosition);
    void filesDropped(const QStringList &paths);

private:
    void open(Mode mode, const QString &caption, const QString &keyword, const QString &script);

    Mode m_mode = Mode::Add;
    QLabel *Label5; // what is being edited
    QLineEdit *Text7; // the keyword
    ScriptEditor *Text4; // the script
    QWidget *Image9; // back
};

} // namespace plum
