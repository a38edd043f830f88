#include "ui/frm_set.h"

#include "library/app_lists.h"
#include "look/app_icon.h"
#include "look/moveit.h"
#include "look/picture_button.h"
#include "ui/controls/file_entry.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/rename_panel.h"
#include "ui/keyword_list.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QStackedLayout>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize mainPanelSize(440, 452);
constexpr std::chrono::seconds passingTime{6};

// The main panel; a press on it leads back to the keyword box.
class MainPanel final : public QWidget
{
public:
    MainPanel(QWidget *parent, std::function<void()> pressed)
        : QWidget(parent)
        , m_pressed(std::move(pressed))
    {
        setObjectName(u"okbox"_s);
    }

protected:
    void mousePressEvent(QMouseEvent *) override { m_pressed(); }

private:
    std::function<void()> m_pressed;
};

} // namespace

frmSet::frmSet(AppLists &lists, AppFaces &faces, const ScriptVocabulary &vocabulary)
    : BorderlessWindow(nullptr, Qt::Window)
    , m_lists(lists)
    , m_vocabulary(vocabulary)
    , m_mover(new moveit(*this))
    , okbox(makeMainPanel(faces))
{
    setObjectName(u"frmSet"_s);
    setWindowTitle(u"Plum"_s);
    m_mover->installOn(*okbox);
    m_mover->installOn(*okbox->findChild<QLabel *>(u"title"_s));
    showMainPanel();
}

EditPanel &frmSet::editPanel()
{
    if (addeditbox)
        return *addeditbox;
    addeditbox = new EditPanel(m_vocabulary, this);
    m_mover->installOn(*addeditbox);
    addeditbox->setTheme(theme());
    connect(this, &BorderlessWindow::themeChanged, addeditbox, &EditPanel::setTheme);
    connect(addeditbox, &EditPanel::back, this, &frmSet::leaveEditorRequested);
    connect(addeditbox, &EditPanel::menuRequested, this, &frmSet::openSettingsMenu);
    connect(addeditbox, &EditPanel::saveRequested, this, &frmSet::saveRequested);
    connect(addeditbox, &EditPanel::filesDropped, this, &frmSet::filesDroppedOnEditor);
    return *addeditbox;
}

RenamePanel &frmSet::renamePanel()
{
    if (editnamebox)
        return *editnamebox;
    editnamebox = new RenamePanel(this);
    m_mover->installOn(*editnamebox);
    connect(editnamebox, &RenamePanel::back, this, &frmSet::showMainPanel);
    connect(editnamebox, &RenamePanel::confirmed, this, &frmSet::renameConfirmed);
    return *editnamebox;
}

QWidget *frmSet::makeMainPanel(AppFaces &faces)
{
    auto *panel = new MainPanel(this, [this] { focusKeywordBox(); });
    panel->setFixedSize(mainPanelSize);

    auto *title = new QLabel(u"Plum"_s, panel);
    title->setObjectName(u"title"_s);
    title->setProperty("heading", true);
    auto *mark = new QLabel(panel);
    mark->setPixmap(appPicture(20, devicePixelRatioF()));
    using Picture = PictureButton::Picture;
    auto *store = new PictureButton(u"store"_s, Picture::Store, tr("Store"), panel);
    auto *menuimg = new PictureButton(u"menuimg"_s, Picture::Hotkey, tr("Hotkey"), panel);
    auto *Image6 = new PictureButton(u"Image6"_s, Picture::Menu, tr("Menu"), panel);
    auto *Image7 = new PictureButton(u"Image7"_s, Picture::Close, tr("Exit"), panel);

    Text8 = new FileEntry(u"Text8"_s, panel);
    Text8->setPlaceholderText(tr("Type a keyword"));
    Text8->setAccessibleName(tr("Keyword"));
    List = new KeywordList(u"List"_s, faces, panel);
    List2 = new KeywordList(u"List2"_s, faces, panel);
    List->setModel(&m_lists.List);
    List2->setModel(&m_lists.List2);
    m_stack = new QStackedLayout;
    m_stack->addWidget(List);
    m_stack->addWidget(List2);
    m_hint = new QLabel(panel);
    m_hint->setObjectName(u"hint"_s);
    m_hint->setProperty("quiet", true);
    m_hint->setTextFormat(Qt::RichText);
    m_hint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_hint->hide();
    m_passing = new QTimer(this);
    m_passing->setSingleShot(true);
    m_passing->setInterval(passingTime);
    connect(m_passing, &QTimer::timeout, this, [this] { showFooter(m_standingHint); });

    auto *head = new QHBoxLayout;
    head->setSpacing(2);
    head->addWidget(mark);
    head->addSpacing(6);
    head->addWidget(title, 1);
    for (PictureButton *picture : {store, menuimg, Image6, Image7})
        head->addWidget(picture);
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(16, 10, 12, 12);
    column->setSpacing(10);
    column->addLayout(head);
    auto *body = new QVBoxLayout;
    body->setContentsMargins(0, 0, 4, 0);
    body->setSpacing(10);
    body->addWidget(Text8);
    body->addLayout(m_stack, 1);
    body->addWidget(m_hint);
    column->addLayout(body, 1);

    connect(Text8, &QLineEdit::textChanged, this, &frmSet::filter);
    connect(Text8, &FileEntry::enterPressed, this, &frmSet::runFirst);
    connect(Text8, &FileEntry::downPressed, this, &frmSet::moveIntoList);
    connect(Text8, &FileEntry::fileDropped, this, &frmSet::fileDroppedOnKeywordBox);
    connectList(*List, ListMarker::List);
    connectList(*List2, ListMarker::List2);
    connect(List, &KeywordList::runRequested, this, &frmSet::runFromList);
    connect(List2, &KeywordList::runRequested, this, &frmSet::runFromList2);
    connect(List2, &KeywordList::editRequested, this, &frmSet::editDotScriptRequested);
    connect(m_hint, &QLabel::linkActivated, this, &frmSet::hotkeyRequested);
    connect(store, &PictureButton::clicked, this, &frmSet::storeRequested);
    connect(menuimg, &PictureButton::clicked, this, &frmSet::hotkeyRequested);
    connect(Image6, &PictureButton::clicked, this,
        [this, Image6] { openSettingsMenu(Image6->mapToGlobal(QPoint(0, Image6->height()))); });
    connect(Image7, &PictureButton::clicked, this, &frmSet::exitRequested);
    return panel;
}

void frmSet::connectList(KeywordList &list, ListMarker marker)
{
    connect(&list, &KeywordList::leftPressed, this, [this] {
        bringListToFront();
        Text8->focusAtEnd();
    });
    connect(&list, &KeywordList::menuRequested, this, [this, marker](QPoint position) {
        activateWindow();
        m_marker = marker;
        Q_EMIT listMenuRequested(position);
    });
    connect(&list, &KeywordList::fileDropped, this, &frmSet::packageDropped);
}

void frmSet::openSettingsMenu(QPoint globalPosition)
{
    activateWindow();
    Q_EMIT settingsMenuRequested(globalPosition);
}

void frmSet::showPanel(QWidget *panel)
{
    for (QWidget *each : std::initializer_list<QWidget *>{okbox, addeditbox, editnamebox}) {
        if (each)
            each->setVisible(each == panel);
    }
    setFixedSize(panel->size());
    wincenter();
}

void frmSet::showMainPanel()
{
    showPanel(okbox);
    Text8->focusAtEnd();
}

void frmSet::showEditPanel()
{
    showPanel(&editPanel());
    addeditbox->takeFocus();
}

void frmSet::showRenamePanel()
{
    showPanel(&renamePanel());
    editnamebox->takeFocus();
}

QString frmSet::keywordBoxText() const
{
    return Text8->text();
}

void frmSet::focusKeywordBox()
{
    Text8->setFocus();
}

void frmSet::bringListToFront()
{
    m_stack->setCurrentWidget(List);
}

QString frmSet::selectedKeyword() const
{
    return m_marker == ListMarker::List ? List->text() : List2->text();
}

void frmSet::setHint(const QString &richText)
{
    m_standingHint = richText;
    if (!m_passing->isActive())
        showFooter(richText);
}

void frmSet::say(const QString &plainText)
{
    showFooter(plainText.toHtmlEscaped());
    m_passing->start();
}

void frmSet::showFooter(const QString &richText)
{
    m_hint->setText(richText);
    m_hint->setVisible(!richText.isEmpty());
}

EditPanel *frmSet::shownEditPanel() const
{
    return addeditbox && addeditbox->isVisibleTo(this) ? addeditbox : nullptr;
}

void frmSet::filter()
{
    // What follows a blank is meant for the script; the keyword is complete by then.
    if (Text8->text().contains(u' '))
        return;
    m_stack->setCurrentWidget(List2);
    m_lists.filter(Text8->text());
    Text8->setFocus();
}

void frmSet::runFirst()
{
    if (m_lists.List2.rowCount() > 0 && List2->text().isEmpty())
        Q_EMIT runFromKeywordBox(m_lists.List2.index(0).data().toString());
}

void frmSet::moveIntoList()
{
    KeywordList *list = Text8->text().isEmpty() ? List : List2;
    m_stack->setCurrentWidget(list);
    list->setFocus();
    list->selectFirst();
}

void frmSet::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && okbox->isVisible())
        Text8->setFocus();
    BorderlessWindow::changeEvent(event);
}

void frmSet::paintEvent(QPaintEvent *event)
{
    BorderlessWindow::paintEvent(event);
    if (!std::exchange(m_hasPainted, true))
        Q_EMIT firstPainted();
}

void frmSet::closeEvent(QCloseEvent *event)
{
    // Exit always goes through one routine, which removes the tray icon and the hotkey too.
    event->ignore();
    Q_EMIT exitRequested();
}

} // namespace plum
