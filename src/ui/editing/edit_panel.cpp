#include "ui/editing/edit_panel.h"

#include "look/picture_button.h"
#include "ui/editing/script_editor.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize panelSize(680, 520);

} // namespace

EditPanel::EditPanel(const ScriptVocabulary &vocabulary, QWidget *parent)
    : QWidget(parent)
    , Label5(new QLabel(this))
    , Text7(new QLineEdit(this))
    , Text4(new ScriptEditor(vocabulary, this))
    , m_lineEnds(new QLabel(this))
{
    setObjectName(u"addeditbox"_s);
    setFixedSize(panelSize);
    Label5->setObjectName(u"Label5"_s);
    Label5->setTextFormat(Qt::PlainText);
    Label5->setProperty("heading", true);
    Text7->setObjectName(u"Text7"_s);
    Text7->setPlaceholderText(tr("Keyword, without blanks"));
    Text7->setAccessibleName(tr("Keyword"));
    using Picture = PictureButton::Picture;
    auto *Image5 = new PictureButton(u"Image5"_s, Picture::Confirm, tr("Save (Ctrl+S)"), this);
    auto *Image8 = new PictureButton(u"Image8"_s, Picture::Menu, tr("Menu"), this);
    auto *back9 = new PictureButton(u"Image9"_s, Picture::Back, tr("Back"), this);
    Image9 = back9;

    auto *head = new QHBoxLayout;
    head->setSpacing(2);
    head->addWidget(back9);
    head->addSpacing(6);
    head->addWidget(Label5, 1);
    head->addWidget(Image8);
    head->addWidget(Image5);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(14, 10, 14, 14);
    column->setSpacing(10);
    column->addLayout(head);
    column->addWidget(Text7);
    column->addWidget(Text4, 1);
    column->addWidget(m_lineEnds);
    m_lineEnds->setObjectName(u"lineEnds"_s);
    m_lineEnds->setProperty("quiet", true);
    m_lineEnds->setWordWrap(true);
    m_lineEnds->setTextFormat(Qt::RichText);
    connect(m_lineEnds, &QLabel::linkActivated, this, &EditPanel::mendLineEnds);

    connect(Image5, &PictureButton::clicked, this, &EditPanel::saveRequested);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this, &EditPanel::saveRequested);
    connect(back9, &PictureButton::clicked, this, &EditPanel::back);
    connect(Image8, &PictureButton::clicked, this,
        [this, Image8] { Q_EMIT menuRequested(Image8->mapToGlobal(QPoint(0, Image8->height()))); });
    connect(Text4, &ScriptEditor::filesDropped, this, &EditPanel::filesDropped);
}

void EditPanel::open(Mode mode, const QString &caption, const QString &keyword, const QString &script)
{
    m_mode = mode;
    Label5->setText(caption);
    Text7->setText(keyword);
    Text7->setEnabled(mode == Mode::Add);
    Text4->setScript(script);
    m_mendsLineEnds = false;
    m_lineEnds->hide();
    // Leaving an opened second script changes nothing, so its way back is called hiding.
    Image9->setToolTip(mode == Mode::EditDotScript ? u"Hide"_s : tr("Back"));
}

void EditPanel::openForAdding()
{
    open(Mode::Add, tr("New app"), {}, {});
}

void EditPanel::openForEditing(const QString &keyword, const QString &script)
{
    open(Mode::Edit, tr("Edit script"), keyword, script);
}

void EditPanel::openDotScript(const QString &keyword, const QString &script)
{
    open(Mode::EditDotScript, u'"' + keyword + u"\"  is editting"_s, keyword, script);
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

bool EditPanel::isModified() const
{
    return Text4->document()->isModified() || m_mendsLineEnds
        || (m_mode == Mode::Add && !Text7->text().isEmpty());
}

void EditPanel::showOddLineEnds(int count)
{
    m_lineEnds->setVisible(count > 0);
    m_lineEnds->setText(tr("%1 line ends do not end a line when the script runs.").arg(count)
        + u" <a href='mend'>%1</a>"_s.arg(tr("Mend them")));
}

void EditPanel::mendLineEnds()
{
    m_mendsLineEnds = true;
    m_lineEnds->setText(tr("Saving ends every line in CR LF."));
}

void EditPanel::takeFocus()
{
    if (m_mode == Mode::Add)
        Text7->setFocus();
    else
        Text4->setFocus();
}

void EditPanel::setTheme(const Theme &theme)
{
    Text4->setTheme(theme);
}

} // namespace plum
