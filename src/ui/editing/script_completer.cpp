#include "ui/editing/script_completer.h"

#include "engine/editions/later_edition.h"
#include "ui/editing/completion_list.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextBlock>

#include <algorithm>
#include <chrono>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Nobody reads a list between two quick keys, and a long script takes a moment to be looked through.
constexpr auto typingPause = 80ms;

bool isOneOfFew(const ScriptWords::Suggestion &suggestion)
{
    using enum ScriptWords::Kind;
    return suggestion.kind == Choice || suggestion.kind == Key || suggestion.kind == File;
}

} // namespace

ScriptCompleter::ScriptCompleter(const ScriptVocabulary &vocabulary, QPlainTextEdit &editor)
    : QObject(&editor)
    , m_editor(editor)
    , m_words(vocabulary)
    , m_list(new CompletionList(&editor))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    connect(&m_pause, &QTimer::timeout, this, [this] { offer(false); });
    connect(m_list, &QListWidget::itemClicked, this, &ScriptCompleter::take);
    connect(m_list, &QListWidget::currentRowChanged, this, &ScriptCompleter::noteChanged);
}

bool ScriptCompleter::isOpen() const
{
    return m_list->isVisible();
}

void ScriptCompleter::close()
{
    m_pause.stop();
    if (!isOpen())
        return;
    m_list->hide();
    Q_EMIT noteChanged();
}

bool ScriptCompleter::takesKey(const QKeyEvent &event)
{
    const bool asks = (event.key() == Qt::Key_Space && event.modifiers() == Qt::ControlModifier)
        || (event.key() == Qt::Key_Down && event.modifiers() == Qt::AltModifier);
    if (asks) {
        offer(true);
        return true;
    }
    if (!isOpen() || (event.modifiers() & ~Qt::KeypadModifier))
        return false;
    if (event.key() == Qt::Key_Escape) {
        close();
        return true;
    }
    if ((event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) && m_list->marked()) {
        take();
        return true;
    }
    return m_list->moveMark(event.key());
}

bool ScriptCompleter::takesTab()
{
    if (!isOpen())
        return false;
    if (!m_list->marked())
        m_list->setCurrentRow(0);
    take();
    return true;
}

void ScriptCompleter::noteKey(const QKeyEvent &event)
{
    const bool isModifier = event.key() >= Qt::Key_Shift && event.key() <= Qt::Key_ScrollLock;
    const bool isText = !event.text().isEmpty() && event.text().front().isPrint();
    if (isText || (event.key() == Qt::Key_Backspace && isOpen()))
        noteTyped();
    else if (!isModifier)
        close();
}

void ScriptCompleter::noteInput(const QInputMethodEvent &event)
{
    if (!event.commitString().isEmpty())
        noteTyped();
    else
        close();
}

void ScriptCompleter::noteTyped()
{
    if (isOpen())
        narrow();
    if (!isOpen())
        m_pause.start();
}

ScriptCompleter::Place ScriptCompleter::place() const
{
    const QTextCursor caret = m_editor.textCursor();
    return {caret.blockNumber(), caret.block().text().first(caret.positionInBlock())};
}

// A script asks for its edition in its first two lines.
Edition ScriptCompleter::edition() const
{
    const QTextBlock first = m_editor.document()->firstBlock();
    const QString start = first.text() + u'\n' + first.next().text();
    return askedEdition(start.toUtf8()).number == 1 ? Edition::One : Edition::Two;
}

// In front of an empty word a list is in the way, unless there is not much that can stand there.
bool ScriptCompleter::opensByItself(const ScriptWords::Completion &completion, const QString &before) const
{
    return completion.start < before.size() || before.endsWith(u'.')
        || std::ranges::any_of(completion.suggestions, isOneOfFew);
}

void ScriptCompleter::offer(bool isAsked)
{
    m_pause.stop();
    const Place caret = place();
    const QStringList lines = m_editor.toPlainText().split(u'\n');
    const ScriptWords::Completion completion = m_words.completion(lines, caret.before, edition(), m_folder);
    if (completion.suggestions.isEmpty() || m_editor.textCursor().hasSelection()
        || (!isAsked && !opensByItself(completion, caret.before))) {
        close();
        return;
    }
    m_offered = completion.suggestions;
    m_block = caret.block;
    m_start = completion.start;
    // Enter ends a line in front of an empty word, too.
    show(m_offered, isAsked || completion.start < caret.before.size() || caret.before.endsWith(u'.'));
}

// Of what was offered before: no key waits for a look through the script.
void ScriptCompleter::narrow()
{
    const Place caret = place();
    if (caret.block != m_block || ScriptWords::wordStart(caret.before) != m_start) {
        close();
        return;
    }
    const QString word = caret.before.sliced(m_start);
    QList<ScriptWords::Suggestion> left;
    for (const ScriptWords::Suggestion &suggestion : m_offered) {
        if (ScriptWords::goesOn(suggestion, word))
            left += suggestion;
    }
    const bool isWhole = std::ranges::any_of(left, [&](const auto &each) { return each.text == word; });
    if (left.isEmpty() || isWhole || word.isEmpty())
        close();
    else
        show(left, true);
}

void ScriptCompleter::show(const QList<ScriptWords::Suggestion> &suggestions, bool marksFirst)
{
    QTextCursor word = m_editor.textCursor();
    const QRect caret = m_editor.cursorRect(word);
    word.setPosition(word.block().position() + static_cast<int>(m_start));
    const QRect place = m_editor.cursorRect(word).united(caret);
    m_list->open(
        suggestions, marksFirst, {m_editor.viewport()->mapTo(&m_editor, place.topLeft()), place.size()});
    Q_EMIT noteChanged();
}

// One step of undo brings the typed word back.
void ScriptCompleter::take()
{
    const QString text = m_list->marked()->text;
    close();
    QTextCursor word = m_editor.textCursor();
    const int caret = word.position();
    word.setPosition(word.block().position() + static_cast<int>(m_start));
    word.setPosition(caret, QTextCursor::KeepAnchor);
    word.insertText(text);
    m_editor.setTextCursor(word);
}

QString ScriptCompleter::note() const
{
    const ScriptWords::Suggestion *marked = m_list->marked();
    if (!marked)
        return {};
    return marked->sentence.isEmpty() ? marked->text : marked->text + u": "_s + marked->sentence;
}

} // namespace plum
