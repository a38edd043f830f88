#pragma once

#include "check/script_words.h"

#include <QObject>
#include <QTimer>

class QInputMethodEvent;
class QKeyEvent;
class QPlainTextEdit;
class QTextCursor;

namespace plum {

class CompletionList;

// Offers what can stand at the caret of the script editor while somebody types, in the words of the checker.
// Keys are the list's only while it is open.
class ScriptCompleter final : public QObject
{
    Q_OBJECT

public:
    ScriptCompleter(const ScriptVocabulary &vocabulary, QPlainTextEdit &editor);

    // Where the script lies, as the system writes it; empty when that is not known.
    void setFolder(const QString &folder) { m_folder = folder; }

    bool isOpen() const;
    void close();

    Edition edition() const;

    // In front of the editor: whether a key was for the list, or asks for it.
    bool takesKey(const QKeyEvent &event);

    // The same for Tab, which goes on to the next control otherwise.
    bool takesTab();

    // Behind the editor, which has put into the text what was typed.
    void noteKey(const QKeyEvent &event);
    void noteInput(const QInputMethodEvent &event);

    // What is marked in the list, with its sentence; empty when nothing is.
    QString note() const;

Q_SIGNALS:
    void noteChanged();

private:
    // The caret's place, and the script's line in front of it.
    struct Place
    {
        int block = 0;
        QString before;
    };

    void noteTyped();
    void offer(bool isAsked);
    void narrow();
    void show(const QList<ScriptWords::Suggestion> &suggestions, bool marksFirst);
    void take();
    Place place() const;
    bool opensByItself(const ScriptWords::Completion &completion, const QString &before) const;

    QPlainTextEdit &m_editor;
    ScriptWords m_words;
    QString m_folder;
    CompletionList *m_list;
    QTimer m_pause;
    QList<ScriptWords::Suggestion> m_offered; // of which the list shows those that go on with the word
    int m_block = 0; // where the word stands
    qsizetype m_start = 0;
};

} // namespace plum
