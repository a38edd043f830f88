#pragma once

#include "engine/command_call.h"
#include "look/theme.h"
#include "ui/editing/breakpoints.h"
#include "ui/editing/shown_finding.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextCursor>

#include <optional>
#include <span>
#include <vector>

namespace plum {

class LineNumbers;
class ScriptCompleter;
class ScriptHighlighter;
class ScriptVocabulary;

// The script editor `Text4`: with the numbers of its lines, a line under what the checker has found, and a
// list of what can stand at the caret. Its lines end in CR LF wherever its text leaves it.
class ScriptEditor final : public QPlainTextEdit
{
    Q_OBJECT

public:
    ScriptEditor(const ScriptVocabulary &vocabulary, QWidget *parent);

    QString script() const;
    void setScript(const QString &text);

    // Adds one line behind the text.
    void appendScriptLine(const QString &line);

    // Puts lines below that of the caret, in its place when it is empty. One step of undo takes them back.
    void insertLines(const QStringList &lines);

    Edition edition() const;

    // In the order of their places. They move with the text around them.
    void setFindings(const ShownFindings &findings);
    int findingCount(Severity severity) const;

    // What was found in the line of the caret: the gravest first, of those what is at the caret itself.
    QStringList findingsAtCaret() const;

    // About what is marked in the list of suggestions; empty when nothing is.
    QString suggestionNote() const;

    // Where the script lies, as the system writes it; empty when that is not known.
    void setFolder(const QString &folder);

    // Puts the caret to the next finding or to the one before, around the ends of the text.
    void goToFinding(bool next);

    // Lines, from 0, before which a run is to be held. They move with their text, and go with it.
    QList<int> breakpoints() const { return m_breakpoints.lines(); }
    void setBreakpoints(const QList<int> &lines);

    // Sets one there, or takes it away; at the next line that runs if that one does not. Says at which; none
    // where no line runs from there on.
    std::optional<int> toggleBreakpoint(int line);

    // That line, or the next one that runs.
    std::optional<int> runnableLine(int from) const;

    // The line, from 0, before which a run is held; it is brought into sight.
    void setHeldLine(std::optional<int> line);

    // While it is locked its text is that of a run, and stays as it is.
    void setLocked(bool isLocked);

    // A line that can be seen, in pixels of the viewport.
    struct Row
    {
        int line = 0; // from 0
        qreal top = 0;
        qreal height = 0;
        std::optional<Severity> severity; // the gravest of what was found in it
        bool hasBreakpoint = false;
        bool isHeld = false;
    };
    std::vector<Row> rows() const;

    const Theme &theme() const { return m_theme; }
    void setTheme(const Theme &theme);

    // What an empty editor shows as a beginning, and what Tab then inserts.
    static QString beginning();

Q_SIGNALS:
    void filesDropped(const QStringList &paths);
    void suggestionNoteChanged();
    void breakpointWished(int line); // at a press into the margin

protected:
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    struct Mark
    {
        QTextCursor place; // what is underlined is selected
        Severity severity;
        QString sentence;

        int begin() const { return place.selectionStart(); }
    };

    void markHeldLine();
    void placeNumbers();
    void underline(QPainter &painter, const QTextBlock &block, const Mark &mark) const;
    std::span<const Mark> marksOf(const QTextBlock &block) const;

    const ScriptVocabulary &m_vocabulary;
    Theme m_theme;
    ScriptHighlighter *m_highlighter;
    LineNumbers *m_numbers;
    ScriptCompleter *m_completer;
    std::vector<Mark> m_marks;
    Breakpoints m_breakpoints{*document()};
    std::optional<int> m_heldLine;
};

} // namespace plum
