#include "ui/editing/script_editor.h"

#include "look/placeholder_ink.h"
#include "ui/controls/dropped_files.h"
#include "ui/editing/script_highlighter.h"

#include <QFontDatabase>
#include <QMimeData>
#include <QTextBlock>

namespace plum {

using namespace Qt::StringLiterals;

ScriptEditor::ScriptEditor(const ScriptVocabulary &vocabulary, QWidget *parent)
    : QPlainTextEdit(parent)
    , m_highlighter(new ScriptHighlighter(vocabulary, document()))
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
}

QString ScriptEditor::script() const
{
    // The document's plain text would turn no-break spaces into blanks.
    return document()->toRawText().replace(QChar::ParagraphSeparator, u"\r\n"_s);
}

void ScriptEditor::setScript(const QString &text)
{
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

// In an empty editor Tab takes the beginning that is shown there; elsewhere it goes to the next control.
bool ScriptEditor::focusNextPrevChild(bool next)
{
    if (!next || !document()->isEmpty())
        return QPlainTextEdit::focusNextPrevChild(next);
    insertPlainText(beginning());
    return true;
}

void ScriptEditor::setTheme(const Theme &theme)
{
    m_highlighter->setTheme(theme);
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
