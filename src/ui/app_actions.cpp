#include "ui/app_actions.h"

#include "engine/launcher.h"
#include "library/app_library.h"
#include "platform/shell.h"
#include "ui/app_faces.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/rename_panel.h"
#include "ui/frm_set.h"
#include "ui/message_boxes.h"

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

AppActions::AppActions(Parts parts)
    : m(std::move(parts))
{
    connect(&m.window, &frmSet::editDotScriptRequested, this, &AppActions::editDotScript);
    connect(&m.window, &frmSet::saveRequested, this, &AppActions::saveEdited);
    connect(&m.window, &frmSet::renameConfirmed, this, &AppActions::confirmRename);
    connect(&m.window, &frmSet::filesDroppedOnEditor, this, &AppActions::appendDropped);
}

void AppActions::addApp()
{
    m.window.editPanel().openForAdding();
    m.window.showEditPanel();
}

void AppActions::editApp(const QString &keyword)
{
    m.window.editPanel().openForEditing(keyword, m.library.scriptText(keyword, u"main.wf"_s));
    m.window.showEditPanel();
}

void AppActions::editDotScript(const QString &keyword)
{
    m.setScriptPath(m.library.appPath(keyword, u".main.wf"_s));
    m.window.editPanel().openDotScript(keyword, m.library.scriptText(keyword, u".main.wf"_s));
    m.window.showEditPanel();
}

void AppActions::renameApp(const QString &keyword)
{
    m.window.renamePanel().open(keyword);
    m.window.showRenamePanel();
}

void AppActions::deleteApp(const QString &keyword)
{
    if (!m.library.DeleteApp(keyword))
        return;
    m.faces.forget();
    m.window.bringListToFront();
}

void AppActions::showGuide(const QString &keyword)
{
    const AppGuide guide = m.library.guide(keyword);
    switch (guide.kind) {
    case AppGuide::Kind::None:
        m.messages.showMessage({.text = u"Guide does not exist"_s, .systemModal = true});
        break;
    case AppGuide::Kind::Text:
        m.messages.showMessage({.text = guide.content});
        break;
    case AppGuide::Kind::Address:
        m.shell.open(guide.content, {}, ShowState::Normal);
        break;
    }
}

void AppActions::appendDropped(const QStringList &paths)
{
    for (const QString &path : paths)
        m.window.editPanel().appendScriptLine(m.shell.shortcutTarget(path));
}

// A save or a rename that was refused leaves the panel open, so that nothing typed is lost.
void AppActions::saveEdited()
{
    EditPanel &panel = m.window.editPanel();
    bool saved = false;
    switch (panel.mode()) {
    case EditPanel::Mode::Add:
        saved = m.library.CreateApp(panel.keyword(), panel.script());
        break;
    case EditPanel::Mode::Edit:
        saved = m.library.SaveApp(panel.keyword(), panel.script());
        break;
    case EditPanel::Mode::EditDotScript:
        saved = m.library.saveScript(panel.keyword(), u".main.wf"_s, panel.script());
        break;
    }
    if (!saved)
        return;
    m.faces.forget();
    m.window.showMainPanel();
}

void AppActions::confirmRename()
{
    RenamePanel &panel = m.window.renamePanel();
    if (!m.library.RenameApp(panel.oldKeyword(), panel.newKeyword()))
        return;
    m.faces.forget();
    m.window.showMainPanel();
}

} // namespace plum
