#include "ui/frm_set.h"

#include "look/moveit.h"
#include "ui/controls/footer.h"
#include "ui/controls/key_sheet.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/rename_panel.h"
#include "ui/manual/manual_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QShortcut>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

frmSet::frmSet(AppLists &lists, AppFaces &faces, const ScriptVocabulary &vocabulary)
    : BorderlessWindow(nullptr, Qt::Window)
    , m_vocabulary(vocabulary)
    , m_mover(new moveit(*this))
    , okbox(new MainPanel(lists, faces, this))
{
    setObjectName(u"frmSet"_s);
    setWindowTitle(u"Plum"_s);
    m_mover->installOn(*okbox);
    m_mover->installOn(*okbox->findChild<QLabel *>(u"title"_s));
    connectMainPanel();
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this, &frmSet::showManual);
    connect(new QShortcut(QKeySequence(u"Shift+F1"_s), this), &QShortcut::activated, this, &frmSet::showKeys);
    showMainPanel();
}

void frmSet::connectMainPanel()
{
    connect(okbox, &MainPanel::runFromKeywordBox, this, &frmSet::runFromKeywordBox);
    connect(okbox, &MainPanel::runFromList, this, &frmSet::runFromList);
    connect(okbox, &MainPanel::runFromList2, this, &frmSet::runFromList2);
    connect(okbox, &MainPanel::listMenuRequested, this, &frmSet::listMenuRequested);
    connect(okbox, &MainPanel::settingsMenuRequested, this, &frmSet::openSettingsMenu);
    connect(okbox, &MainPanel::editDotScriptRequested, this, &frmSet::editDotScriptRequested);
    connect(okbox, &MainPanel::packageDropped, this, &frmSet::packageDropped);
    connect(okbox, &MainPanel::fileDroppedOnKeywordBox, this, &frmSet::fileDroppedOnKeywordBox);
    connect(okbox, &MainPanel::newAppRequested, this, &frmSet::newAppRequested);
    connect(okbox, &MainPanel::editRequested, this, &frmSet::editRequested);
    connect(okbox, &MainPanel::renameRequested, this, &frmSet::renameRequested);
    connect(okbox, &MainPanel::deleteRequested, this, &frmSet::deleteRequested);
    connect(okbox, &MainPanel::storeRequested, this, &frmSet::storeRequested);
    connect(okbox, &MainPanel::hotkeyRequested, this, &frmSet::hotkeyRequested);
    connect(okbox, &MainPanel::exitRequested, this, &frmSet::exitRequested);
    const Footer &footer = okbox->footer();
    connect(&footer, &Footer::goOnRequested, this, &frmSet::goOnRequested);
    connect(&footer, &Footer::stopRequested, this, &frmSet::stopRequested);
    connect(&footer, &Footer::stoppedLineRequested, this, &frmSet::stoppedLineRequested);
    connect(&footer, &Footer::whatHappenedRequested, this, &frmSet::whatHappenedRequested);
    connect(&footer, &Footer::updatesRequested, this, &frmSet::updatesRequested);
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
    connect(addeditbox, &EditPanel::pickRequested, this, &frmSet::pickRequested);
    connect(addeditbox, &EditPanel::followRequested, this, &frmSet::followRequested);
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
    okbox->focusKeywordBoxAtEnd();
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

EditPanel *frmSet::shownEditPanel() const
{
    return addeditbox && addeditbox->isVisibleTo(this) ? addeditbox : nullptr;
}

// One step: from a panel or a list to the keyword box, then the box is cleared, then the window goes.
void frmSet::goBack()
{
    if (shownEditPanel())
        Q_EMIT leaveEditorRequested();
    else if (!okbox->isVisible())
        showMainPanel();
    else if (!okbox->isInKeywordBox())
        okbox->focusKeywordBoxAtEnd();
    else if (!okbox->typedText().isEmpty())
        okbox->clearTyped();
    else
        Q_EMIT hideRequested();
}

void frmSet::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && okbox->isVisible())
        okbox->focusKeywordBox();
    BorderlessWindow::changeEvent(event);
}

// Esc comes here from every control. As a shortcut it would take the key from a box that is about to become
// the active window.
void frmSet::setWaitsForHand(bool waits)
{
    footer().setWaitsForHand(waits);
    if (waits && m_goOnKeys.empty()) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            auto *shortcut = new QShortcut(QKeySequence(key), this);
            connect(shortcut, &QShortcut::activated, this, &frmSet::goOnRequested);
            m_goOnKeys.push_back(shortcut);
        }
    }
    for (QShortcut *shortcut : m_goOnKeys)
        shortcut->setEnabled(waits);
}

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
