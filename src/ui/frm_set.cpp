#include "ui/frm_set.h"

#include "library/app_lists.h"
#include "look/app_icon.h"
#include "look/moveit.h"
#include "look/picture_button.h"
#include "look/window_nodes.h"
#include "ui/controls/file_entry.h"
#include "ui/controls/footer.h"
#include "ui/controls/key_sheet.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/rename_panel.h"
#include "ui/lists/keyword_list.h"
#include "ui/manual/manual_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize mainPanelSize(440, 452);

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

    QSize sizeHint() const override { return mainPanelSize; }

protected:
    void mousePressEvent(QMouseEvent *) override { m_pressed(); }

private:
    std::function<void()> m_pressed;
};

// Leaves a key to the panel that an entry would take for itself: the end of the line on some systems.
class KeyForPanel final : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::ShortcutOverride)
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() != Qt::Key_E || key->modifiers() != Qt::ControlModifier)
            return false;
        event->ignore();
        return true;
    }
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
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this, &frmSet::showManual);
    connect(new QShortcut(QKeySequence(u"Shift+F1"_s), this), &QShortcut::activated, this, &frmSet::showKeys);
    showMainPanel();
}

void frmSet::showKeys()
{
    auto *sheet = new KeySheet(this);
    sheet->resize(sheet->fitting(sheet->sizeHint()));
    sheet->wincenter();
    sheet->show();
}

void frmSet::showManual()
{
    if (!m_manual)
        m_manual = new ManualWindow(this);
    m_manual->bringUp();
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
    connect(addeditbox, &EditPanel::runRequested, this, &frmSet::runEditedRequested);
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
    panel->setAccessibleName(tr("Launcher"));

    auto *title = new QLabel(u"Plum"_s, panel);
    title->setObjectName(u"title"_s);
    title->setProperty("heading", true);
    auto *mark = new QLabel(panel);
    markAsDecoration(*mark);
    mark->setPixmap(appPicture(20, devicePixelRatioF()));
    using Picture = PictureButton::Picture;
    auto *store = new PictureButton(u"store"_s, Picture::Store, tr("Store"), panel);
    auto *menuimg = new PictureButton(u"menuimg"_s, Picture::Hotkey, tr("Hotkey"), panel);
    auto *Image6 = new PictureButton(u"Image6"_s, Picture::Menu, tr("Menu"), panel);
    auto *Image7 = new PictureButton(u"Image7"_s, Picture::Close, tr("Exit"), panel);

    Text8 = new FileEntry(u"Text8"_s, panel);
    Text8->setPlaceholderText(tr("Type a keyword"));
    Text8->setAccessibleName(tr("Keyword"));
    List = new KeywordList(u"List"_s, tr("All apps"), faces, panel);
    List2 = new KeywordList(u"List2"_s, tr("Apps that match"), faces, panel);
    List->setModel(&m_lists.List);
    List2->setModel(&m_lists.List2);
    m_stack = new QStackedLayout;
    m_stack->addWidget(List);
    m_stack->addWidget(List2);
    m_footer = new Footer(panel);

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
    body->addWidget(m_footer);
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
    connect(m_footer, &Footer::createRequested, this, [this] { Q_EMIT newAppRequested(Text8->text()); });
    connect(m_footer, &Footer::stopRequested, this, &frmSet::stopRequested);
    connect(m_footer, &Footer::stoppedLineRequested, this, &frmSet::stoppedLineRequested);
    connect(m_footer, &Footer::hotkeyRequested, this, &frmSet::hotkeyRequested);
    connect(m_footer, &Footer::updatesRequested, this, &frmSet::updatesRequested);
    connect(List2->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmSet::updateMark);
    connect(&m_lists.List2, &QAbstractItemModel::modelReset, this, &frmSet::updateMark);
    connect(&m_lists.List2, &QAbstractItemModel::dataChanged, this, &frmSet::updateMark);
    connect(&m_lists.List2, &QAbstractItemModel::rowsRemoved, this, &frmSet::updateMark);
    makeShortcuts(*panel);
    Text8->installEventFilter(new KeyForPanel(Text8));
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
    connect(&list, &KeywordList::leftAtTheTop, this, [this, &list] {
        list.clearSelection();
        Text8->focusAtEnd();
    });
    connect(&list, &KeywordList::typed, this, [this](const QString &text) {
        Text8->focusAtEnd();
        Text8->insert(text);
    });
    connect(&list, &KeywordList::scriptRequested, this, &frmSet::editRequested);
    connect(&list, &KeywordList::renameRequested, this, [this] { Q_EMIT renameRequested(keywordAtHand()); });
    connect(&list, &KeywordList::deleteRequested, this, [this] { Q_EMIT deleteRequested(keywordAtHand()); });
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
    panel->setFixedSize(fitting(panel->sizeHint()));
    setFixedSize(panel->size());
    wincenter();
}

QWidget *frmSet::shownPanel() const
{
    for (QWidget *each : std::initializer_list<QWidget *>{addeditbox, editnamebox}) {
        if (each && each->isVisibleTo(this))
            return each;
    }
    return okbox;
}

void frmSet::comeToPointer()
{
    const bool isThere = QGuiApplication::screenAt(geometry().center()) == screenInUse();
    if (!isVisible() && (!isThere || size() != fitting(shownPanel()->sizeHint())))
        showPanel(shownPanel());
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

EditPanel *frmSet::shownEditPanel() const
{
    return addeditbox && addeditbox->isVisibleTo(this) ? addeditbox : nullptr;
}

void frmSet::filter()
{
    // What follows a blank is meant for the script; the keyword is complete by then.
    if (Text8->text().contains(u' ')) {
        showMatches();
        return;
    }
    m_stack->setCurrentWidget(List2);
    m_lists.filter(Text8->text());
    Text8->setFocus();
    showMatches();
}

void frmSet::refilter()
{
    if (!Text8->text().isEmpty() && !Text8->text().contains(u' '))
        m_lists.filter(Text8->text());
    showMatches();
}

// Says so when no app matches what is typed.
void frmSet::showMatches()
{
    const QString typed = Text8->text();
    m_footer->setFindsNothing(!typed.isEmpty() && !typed.contains(u' ') && m_lists.List2.rowCount() == 0);
}

void frmSet::startAnew()
{
    bringListToFront();
    Text8->setFocus();
    Text8->selectAll();
}

QString frmSet::keywordOfEnter() const
{
    return m_lists.List2.rowCount() > 0 && List2->text().isEmpty() ? m_lists.List2.index(0).data().toString()
                                                                   : QString();
}

void frmSet::updateMark()
{
    List->mark(keywordOfEnter());
    List2->mark(keywordOfEnter());
}

QString frmSet::keywordAtHand() const
{
    if (List->hasFocus())
        return List->text();
    if (List2->hasFocus())
        return List2->text();
    return keywordOfEnter();
}

void frmSet::makeShortcuts(QWidget &panel)
{
    const auto add = [&](const QKeySequence &keys, auto action) {
        auto *shortcut = new QShortcut(keys, &panel);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(QKeySequence(u"Ctrl+N"_s), [this] {
        const bool isNew = !Text8->text().contains(u' ') && m_lists.List2.rowCount() == 0;
        Q_EMIT newAppRequested(isNew ? Text8->text() : QString());
    });
    add(QKeySequence(u"Ctrl+E"_s), [this] { Q_EMIT editRequested(keywordAtHand()); });
    add(QKeySequence(Qt::Key_F5), [this] {
        if (List->hasFocus())
            Q_EMIT runFromList(List->text());
        else if (List2->hasFocus())
            Q_EMIT runFromList2(List2->text());
        else
            runFirst();
    });
}

// One step: from a panel or a list to the keyword box, then the box is cleared, then the window goes.
void frmSet::goBack()
{
    if (shownEditPanel())
        Q_EMIT leaveEditorRequested();
    else if (!okbox->isVisible())
        showMainPanel();
    else if (!Text8->hasFocus())
        Text8->focusAtEnd();
    else if (!Text8->text().isEmpty())
        Text8->clear();
    else
        Q_EMIT hideRequested();
}

void frmSet::runFirst()
{
    if (const QString keyword = keywordOfEnter(); !keyword.isEmpty())
        Q_EMIT runFromKeywordBox(keyword);
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

// Esc comes here from every control. As a shortcut it would take the key from a box that is about to become
// the active window.
void frmSet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        goBack();
    else
        BorderlessWindow::keyPressEvent(event);
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
