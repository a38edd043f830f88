#include "ui/editing/edit_panel.h"

#include "library/fixed_texts.h"
#include "look/picture_button.h"
#include "look/placeholder_ink.h"
#include "ui/controls/rich_link.h"
#include "ui/editing/script_editor.h"
#include "ui/editing/step_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize panelSize(680, 520);

QString hideCaption()
{
    const QString fixed = u"Hide"_s;
    const QString meaning = meaningOfFixed(fixed);
    return meaning.isEmpty() ? fixed : fixed + u" ("_s + meaning + u')';
}

} // namespace

EditPanel::EditPanel(const ScriptVocabulary &vocabulary, QWidget *parent)
    : QWidget(parent)
    , Label5(new QLabel(this))
    , Text7(new QLineEdit(this))
    , Text4(new ScriptEditor(vocabulary, this))
    , m_file(new QLabel(this))
    , m_lineEnds(new QLabel(this))
    , m_note(new QLabel(this))
    , m_advisor(
          vocabulary, [this] { return Text4->script(); }, this)
{
    setObjectName(u"addeditbox"_s);
    Label5->setObjectName(u"Label5"_s);
    Label5->setTextFormat(Qt::PlainText);
    Label5->setProperty("heading", true);
    Text7->setObjectName(u"Text7"_s);
    Text7->setPlaceholderText(tr("Keyword, without blanks"));
    Text7->setAccessibleName(tr("Keyword"));
    keepPlaceholderReadable(*Text7);
    using Picture = PictureButton::Picture;
    auto *Image5 = new PictureButton(u"Image5"_s, Picture::Confirm, tr("Save (Ctrl+S)"), this);
    auto *Image8 = new PictureButton(u"Image8"_s, Picture::Menu, tr("Menu"), this);
    auto *pick = new PictureButton(u"pick"_s, Picture::Pick, tr("Pick from the screen (Ctrl+P)"), this);
    m_run = new PictureButton(u"run"_s, Picture::Run, tr("Save and run (F5)"), this);
    m_step = new PictureButton(u"step"_s, Picture::Step, tr("Save and run line by line (F10)"), this);
    m_restMeanwhile = {Image5, pick, m_run, m_step};
    m_stepView = new StepView(this);
    m_stepView->hide();
    auto *back9 = new PictureButton(u"Image9"_s, Picture::Back, tr("Back"), this);
    Image9 = back9;

    auto *head = new QHBoxLayout;
    head->setSpacing(2);
    head->addWidget(back9);
    head->addSpacing(6);
    head->addWidget(Label5, 1);
    head->addWidget(pick);
    head->addWidget(m_step);
    head->addWidget(m_run);
    head->addWidget(Image8);
    head->addWidget(Image5);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(14, 10, 14, 14);
    column->setSpacing(10);
    column->addLayout(head);
    column->addWidget(Text7);
    column->addWidget(m_file);
    column->addWidget(Text4, 1);
    column->addWidget(m_stepView);
    column->addWidget(m_note);
    column->addWidget(m_lineEnds);
    m_note->setObjectName(u"findings"_s);
    m_note->setProperty("quiet", true);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // The text does not move with what there is to say.
    QSizePolicy room = m_note->sizePolicy();
    room.setRetainSizeWhenHidden(true);
    m_note->setSizePolicy(room);
    m_note->hide();
    m_file->setObjectName(u"file"_s);
    m_lineEnds->setObjectName(u"lineEnds"_s);
    for (QLabel *label : {m_file, m_lineEnds}) {
        label->setProperty("quiet", true);
        label->setWordWrap(true);
        label->setTextFormat(Qt::RichText);
        label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    }
    connect(m_lineEnds, &QLabel::linkActivated, this, &EditPanel::mendLineEnds);
    connect(m_file, &QLabel::linkActivated, this, &EditPanel::beginWithGuide);
    connect(Text4, &QPlainTextEdit::textChanged, this, &EditPanel::showFile);
    connect(Text4, &QPlainTextEdit::textChanged, &m_advisor, &ScriptAdvisor::noteChange);
    connect(Text4, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        m_said.clear();
        showNote();
    });
    connect(Text4, &ScriptEditor::suggestionNoteChanged, this, &EditPanel::showNote);
    connect(&m_advisor, &ScriptAdvisor::found, this, [this](const ShownFindings &findings) {
        Text4->setFindings(findings);
        showNote();
    });
    const auto goToFinding = [this](const char *key, bool next) {
        connect(new QShortcut(QKeySequence(QLatin1StringView(key)), this), &QShortcut::activated, Text4,
            [this, next] { Text4->goToFinding(next); });
    };
    goToFinding("F8", true);
    goToFinding("Shift+F8", false);

    connect(Image5, &PictureButton::clicked, this, &EditPanel::saveRequested);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, Image5, &PictureButton::click);
    connect(pick, &PictureButton::clicked, this, &EditPanel::pickRequested);
    connect(
        new QShortcut(QKeySequence(u"Ctrl+P"_s), this), &QShortcut::activated, pick, &PictureButton::click);
    connect(m_run, &PictureButton::clicked, this, &EditPanel::runRequested);
    addStepKeys();
    connect(back9, &PictureButton::clicked, this, &EditPanel::back);
    connect(Image8, &PictureButton::clicked, this,
        [this, Image8] { Q_EMIT menuRequested(Image8->mapToGlobal(QPoint(0, Image8->height()))); });
    connect(Text4, &ScriptEditor::filesDropped, this, &EditPanel::filesDropped);
}

int EditPanel::caret() const
{
    return Text4->textCursor().position();
}

void EditPanel::setCaret(int position)
{
    QTextCursor caret = Text4->textCursor();
    caret.setPosition(std::min(position, Text4->document()->characterCount() - 1));
    Text4->setTextCursor(caret);
}

void EditPanel::say(const QString &note)
{
    m_said = note;
    showNote();
}

QSize EditPanel::sizeHint() const
{
    return panelSize;
}

void EditPanel::open(Mode mode, const QString &caption, const QString &keyword, const QString &script)
{
    Q_EMIT scriptLeft();
    keepBreakpoints();
    m_mode = mode;
    Label5->setText(caption);
    setAccessibleName(caption);
    Text7->setText(keyword);
    m_openedKeyword = keyword;
    m_said.clear();
    Text7->setEnabled(mode == Mode::Add);
    Text4->setScript(script);
    if (mode == Mode::Edit)
        Text4->setBreakpoints(m_breakpoints.value(keyword));
    m_mendsLineEnds = false;
    m_lineEnds->hide();
    checkAs({}, {});
    for (PictureButton *button : {m_run, m_step})
        button->setVisible(mode == Mode::Add || mode == Mode::Edit);
    showFile();
    // Leaving an opened second script changes nothing, so its way back is called hiding.
    Image9->setToolTip(mode == Mode::EditDotScript ? hideCaption() : tr("Back"));
}

void EditPanel::openForAdding(const QString &keyword)
{
    open(Mode::Add, tr("New app"), keyword, {});
}

void EditPanel::openForEditing(const QString &keyword, const QString &script)
{
    open(Mode::Edit, tr("Edit script"), keyword, script);
}

void EditPanel::openDotScript(const QString &keyword, const QString &script)
{
    open(Mode::EditDotScript, u'"' + keyword + u"\"  is editting"_s, keyword, script);
}

void EditPanel::openFile(const QString &systemPath, const QString &script)
{
    m_filePath = systemPath;
    open(Mode::EditFile, tr("Edit script"), systemPath.section(u'/', -1), script);
}

QString EditPanel::keyword() const
{
    return Text7->text();
}

QString EditPanel::script() const
{
    return Text4->script();
}

void EditPanel::appendScriptLine(const QString &line)
{
    Text4->appendScriptLine(line);
}

void EditPanel::checkAs(const ScriptFile &file, const QString &folder)
{
    m_target = {.file = file, .folder = folder};
    Text4->setFolder(folder);
    m_advisor.setTarget(m_target);
}

Edition EditPanel::edition() const
{
    return Text4->edition();
}

void EditPanel::insertLines(const QStringList &lines, const QString &note)
{
    if (!lines.isEmpty())
        Text4->insertLines(lines);
    say(note);
}

void EditPanel::showLine(int line)
{
    const QTextBlock block = Text4->document()->findBlockByNumber(line);
    if (!block.isValid())
        return;
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    Text4->setTextCursor(cursor);
    Text4->centerCursor();
}

bool EditPanel::isModified() const
{
    return Text4->document()->isModified() || m_mendsLineEnds
        || (m_mode == Mode::Add && Text7->text() != m_openedKeyword);
}

void EditPanel::showOddLineEnds(int count)
{
    m_lineEnds->setVisible(count > 0);
    m_lineEnds->setText(tr("%1 line ends do not end a line when the script runs.").arg(count)
        + richLink(u"mend"_s, tr("Mend them")));
}

void EditPanel::showFile()
{
    QString text = m_mode == Mode::EditDotScript ? tr(".main.wf, a copy that is not run")
        : m_mode == Mode::EditFile               ? m_filePath.toHtmlEscaped()
                                                 : u"main.wf"_s;
    if (const QString meaning = meaningOfFixed(u"is editting");
        m_mode == Mode::EditDotScript && !meaning.isEmpty())
        text = meaning + u" · "_s + text;
    if (Text4->document()->isEmpty())
        text += u" ·"_s + richLink(u"guide"_s, tr("Begin with a line that says what the app does"));
    m_file->setText(text);
}

// The words are selected, so that what is typed next takes their place.
void EditPanel::beginWithGuide()
{
    const QString mark = u"//guide:"_s;
    const QString words = tr("What this app does");
    Text4->insertPlainText(mark + words + u'\n');
    QTextCursor cursor = Text4->textCursor();
    cursor.setPosition(static_cast<int>(mark.size()));
    cursor.setPosition(static_cast<int>(mark.size() + words.size()), QTextCursor::KeepAnchor);
    Text4->setTextCursor(cursor);
    Text4->setFocus();
}

void EditPanel::mendLineEnds()
{
    m_mendsLineEnds = true;
    m_lineEnds->setText(tr("Saving ends every line in CR LF."));
    m_target.lineEnds = ScriptFile::LineEnds::Mended;
    m_advisor.setTarget(m_target);
}

void EditPanel::showNote()
{
    const QStringList findings = Text4->findingsAtCaret();
    QStringList spoken = findings;
    if (Text4->breakpoints().contains(Text4->textCursor().blockNumber()))
        spoken.prepend(tr("Breakpoint."));
    if (!m_heldWords.isEmpty())
        spoken.prepend(m_heldWords);
    if (const QString all = spoken.join(u'\n'); Text4->accessibleDescription() != all)
        Text4->setAccessibleDescription(all);
    const int errors = Text4->findingCount(Severity::Error);
    const int warnings = Text4->findingCount(Severity::Warning);
    const int hints = Text4->findingCount(Severity::Hint);
    QString note = Text4->suggestionNote();
    if (note.isEmpty())
        note = m_said;
    if (note.isEmpty())
        note = findings.value(0);
    if (findings.size() > 1 && note == findings.first())
        note += u' ' + tr("(%1 more in this line)").arg(findings.size() - 1);
    if (note.isEmpty() && errors + warnings + hints > 0)
        note = tr("Errors: %1 · warnings: %2 · hints: %3 · F8 goes to the next one")
                   .arg(errors)
                   .arg(warnings)
                   .arg(hints);
    m_note->setVisible(!note.isEmpty());
    m_note->setMinimumHeight(2 * m_note->fontMetrics().lineSpacing());
    if (m_note->text() != note)
        m_note->setText(note);
}

void EditPanel::takeFocus()
{
    if (m_mode == Mode::Add && Text7->text().isEmpty())
        Text7->setFocus();
    else
        Text4->setFocus();
}

void EditPanel::setTheme(const Theme &theme)
{
    Text4->setTheme(theme);
}

} // namespace plum
