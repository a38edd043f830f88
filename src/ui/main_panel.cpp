#include "ui/main_panel.h"

#include "library/app_lists.h"
#include "look/app_icon.h"
#include "look/picture_button.h"
#include "look/window_nodes.h"
#include "ui/controls/file_entry.h"
#include "ui/lists/keyword_list.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize panelSize(440, 452);

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

MainPanel::MainPanel(AppLists &lists, AppFaces &faces, QWidget *parent)
    : QWidget(parent)
    , m_lists(lists)
{
    setObjectName(u"okbox"_s);
    setAccessibleName(tr("Launcher"));
    QLayout *head = makeHead();

    Text8 = new FileEntry(u"Text8"_s, this);
    Text8->setPlaceholderText(tr("Type a keyword"));
    Text8->setAccessibleName(tr("Keyword"));
    List = new KeywordList(u"List"_s, tr("All apps"), faces, this);
    List2 = new KeywordList(u"List2"_s, tr("Apps that match"), faces, this);
    List->setModel(&m_lists.List);
    List2->setModel(&m_lists.List2);
    m_stack = new QStackedLayout;
    m_stack->addWidget(List);
    m_stack->addWidget(List2);
    m_footer = new Footer(this);

    auto *column = new QVBoxLayout(this);
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

    connectKeywordBox();
    connectList(*List, ListMarker::List);
    connectList(*List2, ListMarker::List2);
    connect(List, &KeywordList::runRequested, this, &MainPanel::runFromList);
    connect(List2, &KeywordList::runRequested, this, &MainPanel::runFromList2);
    connect(List2, &KeywordList::editRequested, this, &MainPanel::editDotScriptRequested);
    connect(m_footer, &Footer::createRequested, this, [this] { Q_EMIT newAppRequested(typedKeyword()); });
    connect(m_footer, &Footer::lookRequested, this, &MainPanel::lookForTyped);
    connect(m_footer, &Footer::deselectRequested, this, [this] {
        List2->clearSelection();
        Text8->focusAtEnd();
    });
    connect(m_footer, &Footer::hotkeyRequested, this, &MainPanel::hotkeyRequested);
    makeShortcuts();
}

MainPanel::~MainPanel()
{
    // The keyword box gives the keyboard up when nothing else of the panel is there any more.
    qApp->disconnect(this);
}

QSize MainPanel::sizeHint() const
{
    return panelSize;
}

QLayout *MainPanel::makeHead()
{
    auto *title = new QLabel(u"Plum"_s, this);
    title->setObjectName(u"title"_s);
    title->setProperty("heading", true);
    auto *mark = new QLabel(this);
    markAsDecoration(*mark);
    mark->setPixmap(appPicture(20, devicePixelRatioF()));
    using Picture = PictureButton::Picture;
    auto *store = new PictureButton(u"store"_s, Picture::Store, tr("Store"), this);
    auto *menuimg = new PictureButton(u"menuimg"_s, Picture::Hotkey, tr("Hotkey"), this);
    auto *Image6 = new PictureButton(u"Image6"_s, Picture::Menu, tr("Menu"), this);
    auto *Image7 = new PictureButton(u"Image7"_s, Picture::Close, tr("Exit"), this);

    auto *head = new QHBoxLayout;
    head->setSpacing(2);
    head->addWidget(mark);
    head->addSpacing(6);
    head->addWidget(title, 1);
    for (PictureButton *picture : {store, menuimg, Image6, Image7})
        head->addWidget(picture);

    connect(store, &PictureButton::clicked, this, &MainPanel::storeRequested);
    connect(menuimg, &PictureButton::clicked, this, &MainPanel::hotkeyRequested);
    connect(Image6, &PictureButton::clicked, this,
        [this, Image6] { Q_EMIT settingsMenuRequested(Image6->mapToGlobal(QPoint(0, Image6->height()))); });
    connect(Image7, &PictureButton::clicked, this, &MainPanel::exitRequested);
    return head;
}

void MainPanel::connectKeywordBox()
{
    connect(Text8, &QLineEdit::textChanged, this, &MainPanel::filter);
    connect(Text8, &FileEntry::enterPressed, this, &MainPanel::runFirst);
    connect(Text8, &FileEntry::downPressed, this, &MainPanel::moveIntoList);
    connect(Text8, &FileEntry::fileDropped, this, &MainPanel::fileDroppedOnKeywordBox);
    Text8->installEventFilter(new KeyForPanel(Text8));
    connect(qApp, &QApplication::focusChanged, this, &MainPanel::tellHindrance);
    connect(List2->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainPanel::updateMark);
    connect(&m_lists.List2, &QAbstractItemModel::modelReset, this, &MainPanel::updateMark);
    connect(&m_lists.List2, &QAbstractItemModel::dataChanged, this, &MainPanel::updateMark);
    connect(&m_lists.List2, &QAbstractItemModel::rowsRemoved, this, &MainPanel::updateMark);
}

void MainPanel::connectList(KeywordList &list, ListMarker marker)
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
    connect(&list, &KeywordList::scriptRequested, this, &MainPanel::editRequested);
    connect(&list, &KeywordList::renameRequested, this, [this] { Q_EMIT renameRequested(keywordAtHand()); });
    connect(&list, &KeywordList::deleteRequested, this, [this] { Q_EMIT deleteRequested(keywordAtHand()); });
    connect(&list, &KeywordList::menuRequested, this, [this, marker](QPoint position) {
        window()->activateWindow();
        m_marker = marker;
        Q_EMIT listMenuRequested(position);
    });
    connect(&list, &KeywordList::fileDropped, this, &MainPanel::packageDropped);
}

QString MainPanel::typedText() const
{
    return Text8->text();
}

void MainPanel::clearTyped()
{
    Text8->clear();
}

void MainPanel::focusKeywordBox()
{
    Text8->setFocus();
}

void MainPanel::focusKeywordBoxAtEnd()
{
    Text8->focusAtEnd();
}

bool MainPanel::isInKeywordBox() const
{
    return Text8->hasFocus();
}

void MainPanel::bringListToFront()
{
    m_stack->setCurrentWidget(List);
}

QString MainPanel::selectedKeyword() const
{
    return m_marker == ListMarker::List ? List->text() : List2->text();
}

QString MainPanel::typedKeyword() const
{
    return Text8->text().section(u' ', 0, 0);
}

void MainPanel::filter()
{
    // What follows a blank is meant for the script; the keyword is complete by then.
    if (Text8->text().contains(u' ')) {
        tellHindrance();
        return;
    }
    m_stack->setCurrentWidget(List2);
    m_lists.filter(Text8->text());
    Text8->setFocus();
    tellHindrance();
}

void MainPanel::refilter()
{
    if (!Text8->text().isEmpty() && !Text8->text().contains(u' '))
        m_lists.filter(Text8->text());
    tellHindrance();
}

// Filters by the keyword that stands before a blank.
void MainPanel::lookForTyped()
{
    m_stack->setCurrentWidget(List2);
    m_lists.filter(typedKeyword());
    Text8->focusAtEnd();
    tellHindrance();
}

Footer::Hindrance MainPanel::hindrance() const
{
    using Hindrance = Footer::Hindrance;
    if (m_lists.List2.rowCount() > 0) {
        // In a list, Enter runs what is selected there.
        const QWidget *at = window()->focusWidget();
        const bool isForgotten = at != List && at != List2 && !List2->text().isEmpty();
        return isForgotten ? Hindrance::Selected : Hindrance::None;
    }
    if (Text8->text().isEmpty())
        return Hindrance::None;
    if (typedKeyword().isEmpty())
        return Hindrance::NoKeyword;
    const bool isLookedFor = !Text8->text().contains(u' ');
    return isLookedFor || m_lists.matches(typedKeyword()).isEmpty() ? Hindrance::NoApp
                                                                    : Hindrance::NotLookedFor;
}

// Says beforehand where Enter in the keyword box will run nothing; otherwise a marked row says what.
void MainPanel::tellHindrance()
{
    const Footer::Hindrance found = hindrance();
    m_footer->setHindrance(found, found == Footer::Hindrance::Selected ? List2->text() : typedKeyword());
}

void MainPanel::startAnew()
{
    bringListToFront();
    Text8->setFocus();
    Text8->selectAll();
}

QString MainPanel::keywordOfEnter() const
{
    return m_lists.List2.rowCount() > 0 && List2->text().isEmpty() ? m_lists.List2.index(0).data().toString()
                                                                   : QString();
}

void MainPanel::updateMark()
{
    List->mark(keywordOfEnter());
    List2->mark(keywordOfEnter());
    tellHindrance();
}

QString MainPanel::keywordAtHand() const
{
    if (List->hasFocus())
        return List->text();
    if (List2->hasFocus())
        return List2->text();
    return keywordOfEnter();
}

void MainPanel::makeShortcuts()
{
    const auto add = [&](const QKeySequence &keys, auto action) {
        auto *shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(QKeySequence(u"Ctrl+N"_s), [this] {
        const bool isNew = hindrance() == Footer::Hindrance::NoApp;
        Q_EMIT newAppRequested(isNew ? typedKeyword() : QString());
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

void MainPanel::runFirst()
{
    if (const QString keyword = keywordOfEnter(); !keyword.isEmpty())
        Q_EMIT runFromKeywordBox(keyword);
}

void MainPanel::moveIntoList()
{
    KeywordList *list = Text8->text().isEmpty() ? List : List2;
    m_stack->setCurrentWidget(list);
    list->setFocus();
    list->selectFirst();
}

// A press beside the controls leads back to the keyword box.
void MainPanel::mousePressEvent(QMouseEvent *)
{
    focusKeywordBox();
}

} // namespace plum
