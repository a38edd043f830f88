#include "ui/editing/script_editor.h"

#include "look/placeholder_ink.h"
#include "stepping/runnable_lines.h"
#include "ui/controls/dropped_files.h"
#include "ui/editing/line_numbers.h"
#include "ui/editing/script_completer.h"
#include "ui/editing/script_highlighter.h"

#include <QFontDatabase>
#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <algorithm>
#include <functional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qreal waveHeight = 1.6; // pixels, as the next three
constexpr qreal belowBaseline = 2.2; // underscores stay legible
constexpr qreal waveLength = 4;
constexpr qreal underlineWidth = 1.4;

QPainterPath wave(qreal left, qreal right, qreal y)
{
    QPainterPath path({left, y});
    bool isDown = true;
    for (qreal x = left + waveLength / 2; x <= right; x += waveLength / 2, isDown = !isDown)
        path.lineTo(x, isDown ? y + waveHeight : y);
    return path;
}

} // namespace

ScriptEditor::ScriptEditor(const ScriptVocabulary &vocabulary, QWidget *parent)
    : QPlainTextEdit(parent)
    , m_vocabulary(vocabulary)
    , m_theme(Theme::of(palette()))
    , m_highlighter(new ScriptHighlighter(vocabulary, document()))
    , m_numbers(new LineNumbers(*this))
    , m_completer(new ScriptCompleter(vocabulary, *this))
{
    setObjectName(u"Text4"_s);
    setAccessibleName(tr("Script"));
    setLineWrapMode(NoWrap);
    setTabChangesFocus(true);
    setPlaceholderText(beginning());
    keepPlaceholderReadable(*this);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // The window's style sheet sets no family, so the family alone has to come from here.
    setStyleSheet(u"font-family: '%1';"_s.arg(fixed.family()));
    connect(document(), &QTextDocument::contentsChange, this,
        [this](int, int, int added) { m_breakpoints.noteChange(added); });
    connect(this, &QPlainTextEdit::blockCountChanged, this, &ScriptEditor::placeNumbers);
    connect(this, &QPlainTextEdit::updateRequest, m_numbers, [this] { m_numbers->update(); });
    connect(this, &QPlainTextEdit::cursorPositionChanged, m_numbers, [this] { m_numbers->update(); });
    connect(m_completer, &ScriptCompleter::noteChanged, this, &ScriptEditor::suggestionNoteChanged);
    placeNumbers();
}

QString ScriptEditor::script() const
{
    // The document's plain text would turn no-break spaces into blanks.
    return document()->toRawText().replace(QChar::ParagraphSeparator, u"\r\n"_s);
}

void ScriptEditor::setScript(const QString &text)
{
    m_marks.clear();
    m_breakpoints.set({});
    setHeldLine({});
    setPlainText(text);
    document()->setModified(false);
}

void ScriptEditor::appendScriptLine(const QString &line)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    if (!end.block().text().isEmpty())
        end.insertBlock();
    end.insertText(line);
    end.insertBlock();
    setTextCursor(end);
}

void ScriptEditor::insertLines(const QStringList &lines)
{
    QTextCursor caret = textCursor();
    caret.beginEditBlock();
    caret.movePosition(QTextCursor::EndOfBlock);
    if (caret.block().length() > 1)
        caret.insertBlock();
    caret.insertText(lines.join(u'\n'));
    caret.endEditBlock();
    setTextCursor(caret);
}

Edition ScriptEditor::edition() const
{
    return m_completer->edition();
}

QString ScriptEditor::beginning()
{
    return uR"(//guide:What this app does
//edition:2
input.enter text
when.start set.text,empty
    input.text text,"Which text?"
when.end
os.set_clipboard set.text
os.tips $"On the clipboard: {text}"
)"_s;
}

QString ScriptEditor::suggestionNote() const
{
    return m_completer->note();
}

void ScriptEditor::setFolder(const QString &folder)
{
    m_completer->setFolder(folder);
}

void ScriptEditor::keyPressEvent(QKeyEvent *event)
{
    if (!isReadOnly() && m_completer->takesKey(*event)) {
        event->accept();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
    if (!isReadOnly())
        m_completer->noteKey(*event);
}

void ScriptEditor::inputMethodEvent(QInputMethodEvent *event)
{
    if (isReadOnly()) {
        event->ignore();
        return;
    }
    QPlainTextEdit::inputMethodEvent(event);
    m_completer->noteInput(*event);
}

void ScriptEditor::mousePressEvent(QMouseEvent *event)
{
    m_completer->close();
    QPlainTextEdit::mousePressEvent(event);
}

void ScriptEditor::focusOutEvent(QFocusEvent *event)
{
    m_completer->close();
    QPlainTextEdit::focusOutEvent(event);
}

// In an empty editor Tab takes the beginning that is shown there; elsewhere it goes to the next control.
bool ScriptEditor::focusNextPrevChild(bool next)
{
    if (next && m_completer->takesTab())
        return true;
    if (!next || !document()->isEmpty())
        return QPlainTextEdit::focusNextPrevChild(next);
    insertPlainText(beginning());
    return true;
}

void ScriptEditor::setTheme(const Theme &theme)
{
    m_theme = theme;
    m_highlighter->setTheme(theme);
    markHeldLine();
    m_numbers->update();
}

void ScriptEditor::setFindings(const ShownFindings &findings)
{
    m_marks.clear();
    m_marks.reserve(static_cast<std::size_t>(findings.size()));
    const int end = document()->characterCount() - 1;
    for (const ShownFinding &finding : findings) {
        QTextCursor place(document());
        place.setPosition(std::min(finding.position, end));
        place.setPosition(std::min(finding.position + finding.length, end), QTextCursor::KeepAnchor);
        m_marks.push_back({place, finding.severity, finding.sentence});
    }
    viewport()->update();
    m_numbers->update();
}

int ScriptEditor::findingCount(Severity severity) const
{
    return static_cast<int>(std::ranges::count(m_marks, severity, &Mark::severity));
}

std::span<const ScriptEditor::Mark> ScriptEditor::marksOf(const QTextBlock &block) const
{
    const auto first = std::ranges::lower_bound(m_marks, block.position(), {}, &Mark::begin);
    const int end = block.position() + block.length();
    return {first, std::ranges::lower_bound(first, m_marks.end(), end, {}, &Mark::begin)};
}

QStringList ScriptEditor::findingsAtCaret() const
{
    const int caret = textCursor().position();
    const auto isAtCaret
        = [caret](const Mark &mark) { return mark.begin() <= caret && caret <= mark.place.selectionEnd(); };
    const auto found = marksOf(textCursor().block());
    std::vector<Mark> marks(found.begin(), found.end());
    std::ranges::stable_sort(marks, std::ranges::greater(),
        [&](const Mark &mark) { return std::pair(mark.severity, isAtCaret(mark)); });
    QStringList sentences;
    for (const Mark &mark : marks)
        sentences += mark.sentence;
    return sentences;
}

void ScriptEditor::goToFinding(bool next)
{
    if (m_marks.empty())
        return;
    const int caret = textCursor().position();
    const auto behind = std::ranges::upper_bound(m_marks, caret, {}, &Mark::begin);
    const auto here = std::ranges::lower_bound(m_marks, caret, {}, &Mark::begin);
    const Mark &target = next     ? behind == m_marks.end() ? m_marks.front() : *behind
        : here == m_marks.begin() ? m_marks.back()
                                  : *(here - 1);
    QTextCursor place = textCursor();
    place.setPosition(target.begin());
    setTextCursor(place);
    setFocus();
}

std::vector<ScriptEditor::Row> ScriptEditor::rows() const
{
    std::vector<Row> rows;
    const QList<int> breakpoints = this->breakpoints();
    QTextBlock block = firstVisibleBlock();
    qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    for (; block.isValid() && top <= viewport()->height(); block = block.next()) {
        const int line = block.blockNumber();
        Row row{
            line, top, blockBoundingRect(block).height(), {}, breakpoints.contains(line), m_heldLine == line};
        for (const Mark &mark : marksOf(block))
            row.severity = std::max(row.severity, std::optional(mark.severity));
        rows.push_back(row);
        top += row.height;
    }
    return rows;
}

void ScriptEditor::setBreakpoints(const QList<int> &lines)
{
    m_breakpoints.set(lines);
    m_numbers->update();
}

std::optional<int> ScriptEditor::toggleBreakpoint(int line)
{
    const std::optional<int> runnable = runnableLine(line);
    if (runnable) {
        m_breakpoints.toggle(*runnable);
        m_numbers->update();
    }
    return runnable;
}

std::optional<int> ScriptEditor::runnableLine(int from) const
{
    const QList<int> lines = runnableLines(script().toUtf8(), m_vocabulary, edition());
    const auto found = std::ranges::lower_bound(lines, from + 1);
    return found == lines.end() ? std::nullopt : std::optional(*found - 1);
}

void ScriptEditor::setHeldLine(std::optional<int> line)
{
    m_heldLine = line;
    markHeldLine();
    if (line) {
        setTextCursor(QTextCursor(document()->findBlockByNumber(*line)));
        ensureCursorVisible();
    }
    m_numbers->update();
}

void ScriptEditor::markHeldLine()
{
    QList<QTextEdit::ExtraSelection> marked;
    if (m_heldLine) {
        QTextEdit::ExtraSelection whole;
        whole.cursor = QTextCursor(document()->findBlockByNumber(*m_heldLine));
        whole.format.setBackground(m_theme.held);
        whole.format.setProperty(QTextFormat::FullWidthSelection, true);
        marked += whole;
    }
    setExtraSelections(marked);
}

void ScriptEditor::setLocked(bool isLocked)
{
    m_completer->close();
    // An input method would write all the same.
    setAttribute(Qt::WA_InputMethodEnabled, !isLocked);
    setTextInteractionFlags(
        isLocked ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard : Qt::TextEditorInteraction);
}

void ScriptEditor::placeNumbers()
{
    const int width = m_numbers->neededWidth();
    setViewportMargins(width, 0, 0, 0);
    const QRect text = viewport()->geometry();
    m_numbers->setGeometry(text.left() - width, text.top(), width, text.height());
}

void ScriptEditor::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    placeNumbers();
    if (m_heldLine) // what is shown of the run has taken its room from the text
        ensureCursorVisible();
}

void ScriptEditor::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        placeNumbers();
}

void ScriptEditor::paintEvent(QPaintEvent *event)
{
    QPlainTextEdit::paintEvent(event);
    if (m_marks.empty())
        return;
    QPainter painter(viewport());
    painter.setClipRect(event->rect());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Row &row : rows()) {
        const QTextBlock block = document()->findBlockByNumber(row.line);
        for (const Mark &mark : marksOf(block))
            underline(painter, block, mark);
    }
}

// Hints are dotted, so that nobody has to tell them by their colour.
void ScriptEditor::underline(QPainter &painter, const QTextBlock &block, const Mark &mark) const
{
    const QTextLine line = block.layout()->lineAt(0);
    if (!line.isValid())
        return;
    const QPointF corner = blockBoundingGeometry(block).translated(contentOffset()).topLeft();
    const int end = std::min(mark.place.selectionEnd() - block.position(), block.length() - 1);
    const qreal left = corner.x() + line.cursorToX(mark.begin() - block.position());
    // Where nothing is selected something is missing; that has to be seen, too.
    const qreal right
        = std::max(corner.x() + line.cursorToX(end), left + fontMetrics().horizontalAdvance(u'x'));
    const qreal y = corner.y() + line.y() + line.ascent() + belowBaseline;
    const QColor ink = mark.severity == Severity::Error ? m_theme.error
        : mark.severity == Severity::Warning            ? m_theme.warning
                                                        : m_theme.quiet;
    painter.setBrush(Qt::NoBrush);
    if (mark.severity == Severity::Hint) {
        painter.setPen(QPen(ink, underlineWidth, Qt::DotLine));
        painter.drawLine(QPointF(left, y + 1), QPointF(right, y + 1));
    } else {
        painter.setPen(QPen(ink, underlineWidth));
        painter.drawPath(wave(left, right, y));
    }
}

bool ScriptEditor::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QPlainTextEdit::viewportEvent(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QTextCursor under = cursorForPosition(help->pos());
    QStringList sentences;
    for (const Mark &mark : marksOf(under.block())) {
        const int end = std::max(mark.place.selectionEnd(), mark.begin() + 1);
        if (under.position() >= mark.begin() && under.position() <= end)
            sentences += u"<p>"_s + mark.sentence.toHtmlEscaped() + u"</p>"_s;
    }
    // Rich text is wrapped; an empty one hides the tip.
    QToolTip::showText(help->globalPos(), sentences.join(QString()), this);
    return true;
}

bool ScriptEditor::canInsertFromMimeData(const QMimeData *source) const
{
    return !droppedFiles(source).isEmpty() || QPlainTextEdit::canInsertFromMimeData(source);
}

void ScriptEditor::insertFromMimeData(const QMimeData *source)
{
    if (const QStringList files = droppedFiles(source); !files.isEmpty())
        Q_EMIT filesDropped(files);
    else
        QPlainTextEdit::insertFromMimeData(source);
}

} // namespace plum
