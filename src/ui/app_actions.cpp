#include "ui/app_actions.h"

#include "engine/launcher.h"
#include "library/app_library.h"
#include "library/fixed_texts.h"
#include "platform/shell.h"
#include "ui/asking/message_boxes.h"
#include "ui/controls/footer.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/rename_panel.h"
#include "ui/frm_set.h"
#include "ui/lists/app_faces.h"

#include <QFileInfo>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

AppActions::AppActions(Needs needs)
    : m(std::move(needs))
{
    // A key without an app does nothing.
    const auto withKeyword = [this](void (AppActions::*action)(const QString &)) {
        return [this, action](const QString &keyword) {
            if (!keyword.isEmpty())
                (this->*action)(keyword);
        };
    };
    connect(&m.window, &frmSet::editDotScriptRequested, this, &AppActions::editDotScript);
    connect(&m.window, &frmSet::saveRequested, this, &AppActions::saveEdited);
    connect(&m.window, &frmSet::runEditedRequested, this, &AppActions::runEdited);
    connect(&m.window, &frmSet::pickRequested, this, &AppActions::pickForEdited);
    connect(&m.window, &frmSet::followRequested, this, &AppActions::followEdited);
    connect(&m.window, &frmSet::leaveEditorRequested, this, &AppActions::leaveEditor);
    connect(&m.window, &frmSet::newAppRequested, this, &AppActions::addApp);
    connect(&m.window, &frmSet::editRequested, this, withKeyword(&AppActions::editApp));
    connect(&m.window, &frmSet::renameRequested, this, withKeyword(&AppActions::renameApp));
    connect(&m.window, &frmSet::deleteRequested, this, withKeyword(&AppActions::deleteApp));
    connect(&m.window, &frmSet::renameConfirmed, this, &AppActions::confirmRename);
    connect(&m.window, &frmSet::filesDroppedOnEditor, this, &AppActions::appendDropped);
}

bool AppActions::mayLeaveEditor()
{
    const EditPanel *panel = m.window.shownEditPanel();
    if (!panel || !panel->isModified())
        return true;
    const QString name = panel->keyword().isEmpty() ? tr("The new app") : u'"' + panel->keyword() + u'"';
    switch (MessageBoxes::askUnsaved(tr("%1 is not saved.").arg(name))) {
    case MessageBoxes::Unsaved::Save:
        return saveEdited();
    case MessageBoxes::Unsaved::Discard:
        return true;
    case MessageBoxes::Unsaved::GoOn:
        return false;
    }
    Q_UNREACHABLE();
}

void AppActions::leaveEditor()
{
    if (mayLeaveEditor())
        m.window.showMainPanel();
}

void AppActions::addApp(const QString &keyword)
{
    if (!mayLeaveEditor())
        return;
    m.window.editPanel().openForAdding(keyword);
    m.window.showEditPanel();
}

void AppActions::editApp(const QString &keyword)
{
    openApp(keyword);
    m.window.showEditPanel();
}

void AppActions::openApp(const QString &keyword)
{
    m_opened = m.appLibrary.scriptFile(keyword, u"main.wf"_s);
    m.window.editPanel().openForEditing(keyword, m_opened.shown());
    m.window.editPanel().checkAs(m_opened, m.appLibrary.folders().appOnDisk(keyword).value_or(QString()));
    m.window.editPanel().showOddLineEnds(m_opened.oddLineEnds());
}

void AppActions::editAtLine(const QString &keyword, int line)
{
    if (!mayLeaveEditor())
        return;
    editApp(keyword);
    m.window.editPanel().showLine(line);
}

void AppActions::editDotScript(const QString &keyword)
{
    m.setScriptPath(m.appLibrary.appPath(keyword, u".main.wf"_s));
    m_opened = m.appLibrary.scriptFile(keyword, u".main.wf"_s);
    m.window.editPanel().openDotScript(keyword, m_opened.shown());
    m.window.editPanel().checkAs(m_opened, m.appLibrary.folders().appOnDisk(keyword).value_or(QString()));
    m.window.editPanel().showOddLineEnds(m_opened.oddLineEnds());
    m.window.showEditPanel();
}

void AppActions::editFile(const QString &systemPath)
{
    if (!mayLeaveEditor())
        return;
    if (const QString keyword = m.appLibrary.keywordOf(systemPath); !keyword.isEmpty()) {
        editApp(keyword);
        return;
    }
    m_opened = m.appLibrary.scriptAt(systemPath);
    m.window.editPanel().openFile(systemPath, m_opened.shown());
    m.window.editPanel().checkAs(m_opened, QFileInfo(systemPath).absolutePath());
    m.window.editPanel().showOddLineEnds(m_opened.oddLineEnds());
    m.window.showEditPanel();
}

void AppActions::renameApp(const QString &keyword)
{
    m.window.renamePanel().open(keyword);
    m.window.showRenamePanel();
}

void AppActions::deleteApp(const QString &keyword)
{
    if (!m.appLibrary.DeleteApp(keyword))
        return;
    m.faces.forget();
    m.window.startAnew();
}

void AppActions::goBack(const QString &keyword)
{
    if (m.appLibrary.goBack(keyword))
        m.faces.forget();
}

void AppActions::showGuide(const QString &keyword)
{
    const AppGuide guide = m.appLibrary.guide(keyword);
    switch (guide.kind) {
    case AppGuide::Kind::None: {
        const QString text = u"Guide does not exist"_s;
        m.messages.showMessage({.text = text, .systemModal = true, .meaning = meaningOfFixed(text)});
        break;
    }
    case AppGuide::Kind::Text:
        m.messages.showMessage({.text = guide.content});
        break;
    case AppGuide::Kind::Address:
        m.shell.open(guide.content, {}, ShowState::Normal);
        break;
    }
}

void AppActions::lookAgain()
{
    const QStringList found = m.appLibrary.takeInNewApps();
    m.faces.forget();
    m.window.refilter();
    m.window.showMainPanel();
    m.window.footer().say(found.isEmpty() ? tr("Every app in the folder is in the list already.")
                                          : tr("Taken in: %1").arg(found.join(u", "_s)));
}

void AppActions::appendDropped(const QStringList &paths)
{
    for (const QString &path : paths)
        m.window.editPanel().appendScriptLine(m.shell.shortcutTarget(path));
}

bool AppActions::save()
{
    EditPanel &panel = m.window.editPanel();
    const bool isNew = panel.mode() == EditPanel::Mode::Add;
    const ScriptFile::LineEnds lineEnds
        = panel.mendsLineEnds() ? ScriptFile::LineEnds::Mended : ScriptFile::LineEnds::Kept;
    const QString fileName = panel.mode() == EditPanel::Mode::EditDotScript ? u".main.wf"_s : u"main.wf"_s;
    const bool saved = isNew ? m.appLibrary.CreateApp(panel.keyword(), panel.script())
        : panel.mode() == EditPanel::Mode::EditFile
        ? m.appLibrary.saveScriptAt(panel.filePath(), m_opened, panel.script(), lineEnds)
        : m.appLibrary.saveScript(panel.keyword(), fileName, m_opened, panel.script(), lineEnds);
    if (!saved)
        return false;
    m.faces.forget();
    if (isNew)
        m.window.refilter();
    return true;
}

// A save or a rename that was refused leaves the panel open, so that nothing typed is lost.
bool AppActions::saveEdited()
{
    const EditPanel &panel = m.window.editPanel();
    const bool mends = panel.mendsLineEnds();
    if (!save())
        return false;
    m.window.showMainPanel();
    if (mends)
        m.window.footer().say(tr("Line ends mended: every line of %1 ends in CR LF.").arg(panel.keyword()));
    return true;
}

// What runs is what the user sees.
void AppActions::runEdited()
{
    if (!m.window.editPanel().breakpoints().isEmpty()) {
        followEdited(FollowFrom::Breakpoints);
        return;
    }
    const QString keyword = m.window.editPanel().keyword();
    const bool isNew = m.window.editPanel().mode() == EditPanel::Mode::Add;
    if ((isNew || m.window.editPanel().isModified()) && !saveEdited())
        return;
    m.run(keyword);
}

// The editor stays, since the run is held there.
void AppActions::followEdited(FollowFrom from)
{
    EditPanel &panel = m.window.editPanel();
    if (!m.follow)
        return;
    if (panel.mode() == EditPanel::Mode::Add || panel.isModified()) {
        const int caret = panel.caret();
        if (!save())
            return;
        openApp(panel.keyword());
        panel.setCaret(caret);
    }
    m.follow(panel.keyword(), from);
}

void AppActions::pickForEdited()
{
    EditPanel &panel = m.window.editPanel();
    if (!m.pick)
        return;
    m.pick({panel.edition(), panel.folder()}, [&panel](const PickedText &picked) {
        panel.insertLines(picked.lines, picked.note);
        panel.takeFocus();
    });
}

void AppActions::confirmRename()
{
    RenamePanel &panel = m.window.renamePanel();
    if (!m.appLibrary.RenameApp(panel.oldKeyword(), panel.newKeyword()))
        return;
    m.faces.forget();
    m.window.refilter();
    m.window.showMainPanel();
}

} // namespace plum
