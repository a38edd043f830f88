#include "ui/asking/shurubox.h"

#include "library/fixed_texts.h"
#include "look/moveit.h"
#include "look/picture_button.h"
#include "platform/shell.h"
#include "ui/controls/file_entry.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize inputSize(420, 152);
constexpr QSize boxSize(420, 172);
constexpr QSize tipSize(420, 200);

// A prompt of several lines makes the box higher, up to a limit.
QSize inputSizeFor(const QLabel &prompt)
{
    constexpr int promptWidth = 350;
    constexpr int oneLine = 32;
    const int more = std::clamp(prompt.heightForWidth(promptWidth) - oneLine, 0, 400);
    return inputSize + QSize(0, more);
}

QLabel *label(const QString &name, const QString &text, QWidget *parent)
{
    auto *made = new QLabel(text, parent);
    made->setObjectName(name);
    made->setTextFormat(Qt::PlainText);
    made->setWordWrap(true);
    return made;
}

QPushButton *button(const QString &name, const QString &caption, QWidget *parent)
{
    auto *made = new QPushButton(caption, parent);
    made->setObjectName(name);
    return made;
}

QVBoxLayout *columnOf(QWidget *panel)
{
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    return column;
}

QHBoxLayout *headRow(QLabel *heading, PictureButton *picture)
{
    heading->setProperty("heading", true);
    auto *row = new QHBoxLayout;
    row->addWidget(heading, 1);
    row->addWidget(picture, 0, Qt::AlignTop);
    return row;
}

} // namespace

shurubox::shurubox(Shell &shell, Library library, QWidget *owner)
    : BorderlessWindow(owner, Qt::Dialog | Qt::WindowStaysOnTopHint)
    , m_shell(shell)
    , m_library(std::move(library))
    , m_panels(new QStackedWidget(this))
    , Image1(new PictureButton(u"Image1"_s, PictureButton::Picture::Close, tr("Close and go on"), this))
    , m_inputPanel(makeInputPanel())
    , m_tipPanel(makeTipPanel())
    , renamebox(makeNamePanel())
    , setupbox(makeSetupPanel())
{
    setObjectName(u"shurubox"_s);
    setWindowTitle(tr("Plum asks"));
    m_panels->setAccessibleName(windowTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    for (QWidget *panel : {m_inputPanel, m_tipPanel, renamebox, setupbox})
        m_panels->addWidget(panel);
    connect(Image1, &PictureButton::clicked, this, &shurubox::closeInput);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(18, 12, 12, 16);
    layout->setSpacing(6);
    layout->addWidget(m_panels, 1);
    layout->addWidget(Image1, 0, Qt::AlignTop);
    (new moveit(*this))->installOn(*this);
}

QWidget *shurubox::makeInputPanel()
{
    auto *panel = new QWidget(this);
    panel->setObjectName(u"shurubox"_s);
    panel->setAccessibleName(tr("Question"));
    title = label(u"title"_s, {}, panel);
    indim = label(u"indim"_s, {}, panel);
    indim->hide();
    Text1 = new FileEntry(u"Text1"_s, panel);
    auto *Label1 = button(u"Label1"_s, tr("OK"), panel);
    Label1->setProperty("primary", true);

    QVBoxLayout *column = columnOf(panel);
    title->setProperty("heading", true);
    title->setMinimumHeight(Image1->height());
    column->addWidget(title);
    column->addWidget(Text1);
    column->addStretch();
    column->addWidget(Label1, 0, Qt::AlignRight);

    connect(Text1, &FileEntry::enterPressed, this, &shurubox::confirmInput);
    connect(Text1, &FileEntry::fileDropped, this,
        [this](const QString &path) { Text1->setText(m_shell.shortcutTarget(path)); });
    connect(Label1, &QPushButton::clicked, this, &shurubox::confirmInput);
    return panel;
}

QWidget *shurubox::makeTipPanel()
{
    auto *panel = new QWidget(this);
    panel->setObjectName(u"tippanel"_s);
    panel->setAccessibleName(tr("Tip"));
    tipsbox = new QPlainTextEdit(panel);
    tipsbox->setObjectName(u"tipsbox"_s);
    tipsbox->setAccessibleName(tr("Tip"));
    tipsbox->setReadOnly(true);

    QVBoxLayout *column = columnOf(panel);
    QLabel *heading = label({}, tr("Tip"), panel);
    heading->setProperty("heading", true);
    heading->setMinimumHeight(Image1->height());
    column->addWidget(heading);
    column->addWidget(tipsbox, 1);
    m_keys = label(u"keys"_s, {}, panel);
    m_keys->setProperty("quiet", true);
    m_keys->hide();
    column->addWidget(m_keys);
    return panel;
}

QWidget *shurubox::makeNamePanel()
{
    auto *panel = new QWidget(this);
    panel->setObjectName(u"renamebox"_s);
    panel->setAccessibleName(tr("Choose a keyword for this package"));
    auto *entry = new FileEntry(u"Text4"_s, panel);
    entry->setAcceptDrops(false);
    Text4 = entry;
    Text4->setAccessibleName(tr("Keyword"));
    Label6 = label(u"Label6"_s, {}, panel);
    auto *Image2 = new PictureButton(
        u"Image2"_s, PictureButton::Picture::Confirm, tr("Install under this keyword"), panel);
    auto *Label3 = button(u"Label3"_s, tr("Replace the existing app"), panel);
    auto *Label4 = button(u"Label4"_s, tr("Details"), panel);
    auto *cancel = button(u"cancel"_s, tr("Cancel"), panel);

    QVBoxLayout *column = columnOf(panel);
    column->addLayout(headRow(label({}, tr("Choose a keyword for this package"), panel), Image2));
    column->addWidget(Text4);
    auto *taken = new QHBoxLayout;
    taken->addWidget(Label6, 1);
    m_meaning = label(u"meaning"_s, {}, panel);
    m_meaning->setProperty("quiet", true);
    m_meaning->setWordWrap(false);
    m_meaning->hide();
    taken->addWidget(m_meaning, 0, Qt::AlignTop);
    column->addLayout(taken);
    column->addStretch();
    auto *row = new QHBoxLayout;
    row->addWidget(cancel);
    row->addWidget(Label4);
    row->addStretch();
    row->addWidget(Label3);
    column->addLayout(row);

    connect(entry, &FileEntry::enterPressed, this, &shurubox::confirmName);
    connect(Image2, &PictureButton::clicked, this, &shurubox::confirmName);
    connect(Label3, &QPushButton::clicked, this, [this] {
        const QString name = Text4->text();
        answered();
        Q_EMIT nameConfirmedUnchecked(name);
    });
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    connect(entry, &QLineEdit::textChanged, this, [this](const QString &name) {
        if (m_library.exists(name) && !name.isEmpty())
            tellTaken(name);
        else
            tell({});
    });
    connect(Label4, &QPushButton::clicked, this, [this] { bringUp(setupbox); });
    return panel;
}

QWidget *shurubox::makeSetupPanel()
{
    auto *panel = new QWidget(this);
    panel->setObjectName(u"setupbox"_s);
    panel->setAccessibleName(tr("Details"));
    Text2 = new QLineEdit(panel);
    Text2->setObjectName(u"Text2"_s);
    Text2->setReadOnly(true);
    Text2->setAccessibleName(tr("Package"));
    Text3 = new QLineEdit(panel);
    Text3->setObjectName(u"Text3"_s);
    Text3->setReadOnly(true);
    Text3->setAccessibleName(tr("Its own keyword"));
    auto *Label2 = label(u"Label2"_s, tr("Package"), panel);
    auto *Label5 = label(u"Label5"_s, tr("Its own keyword"), panel);
    auto *back = new PictureButton(u"setupback"_s, PictureButton::Picture::Back, tr("Back"), panel);

    QVBoxLayout *column = columnOf(panel);
    column->addLayout(headRow(Label2, back));
    column->addWidget(Text2);
    column->addWidget(Label5);
    column->addWidget(Text3);
    connect(back, &PictureButton::clicked, this, [this] { bringUp(renamebox); });
    return panel;
}

void shurubox::bringUp(QWidget *panel)
{
    m_panels->setCurrentWidget(panel);
    Image1->setVisible(panel == m_inputPanel || panel == m_tipPanel);
    setFixedSize(fitting(panel == m_tipPanel ? tipSize
            : panel == m_inputPanel          ? inputSizeFor(*title)
                                             : boxSize));
    if (!isVisible())
        wincenter();
    show();
    raise();
    activateWindow();
}

void shurubox::showInput(const QString &prompt, const QString &variable)
{
    title->setText(prompt);
    Text1->setAccessibleName(prompt.isEmpty() ? tr("Answer") : prompt);
    indim->setText(variable);
    bringUp(m_inputPanel);
    Text1->setFocus();
}

void shurubox::showTip(const QString &text)
{
    tipsbox->setPlainText(text);
    bringUp(m_tipPanel);
    tipsbox->setFocus();
}

void shurubox::explainKeys(const QString &text)
{
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    m_keys->setFont(small);
    m_keys->setText(text);
    m_keys->setVisible(!text.isEmpty());
}

void shurubox::showName(const QString &keyword, const QString &package)
{
    Text4->setText(keyword);
    Text2->setText(package);
    Text3->setText(keyword);
    bringUp(renamebox);
    Text4->setFocus();
    Text4->selectAll();
}

QString shurubox::entryText() const
{
    return Text1->text();
}

void shurubox::confirmInput()
{
    const QString variable = indim->text();
    const QString text = Text1->text();
    answered();
    Q_EMIT inputConfirmed(variable, text);
}

void shurubox::closeInput()
{
    answered();
    Q_EMIT inputClosed();
}

// What is wrong with the name; empty where nothing is.
void shurubox::tell(const QString &fault, const QString &meaning)
{
    Label6->setText(fault);
    m_meaning->setText(meaning);
    m_meaning->setVisible(!meaning.isEmpty());
}

void shurubox::tellTaken(const QString &name)
{
    tell(name + u"  already exists"_s, meaningOfFixed(u"already exists"));
}

void shurubox::confirmName()
{
    const QString name = Text4->text();
    if (m_library.exists(name)) {
        tellTaken(name);
        return;
    }
    if (const QString fault = m_library.faultOf(name); !fault.isEmpty()) {
        tell(fault, meaningOfFixed(fault));
        return;
    }
    answered();
    Q_EMIT nameConfirmed(name);
}

void shurubox::closeEvent(QCloseEvent *event)
{
    BorderlessWindow::closeEvent(event);
    Q_EMIT unloaded();
    if (!m_isAnswered)
        Q_EMIT dismissed(m_isEnterPressed, indim->text(), Text1->text());
}

void shurubox::answered()
{
    m_isAnswered = true;
    close();
}

void shurubox::keyPressEvent(QKeyEvent *event)
{
    // Enter in an entry never comes here; everywhere else it abandons, as Esc does.
    m_isEnterPressed = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (m_isEnterPressed || event->key() == Qt::Key_Escape)
        close();
    else
        BorderlessWindow::keyPressEvent(event);
}

} // namespace plum
