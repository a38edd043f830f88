// The edit panel's breakpoints, and what it shows of a run that is followed.

#include "look/picture_button.h"
#include "ui/editing/edit_panel.h"
#include "ui/editing/script_editor.h"
#include "ui/editing/step_view.h"

#include <QHideEvent>
#include <QLineEdit>
#include <QShortcut>

#include <functional>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

// While a run is followed these keys are about it.
void EditPanel::addStepKeys()
{
    using Wish = FollowedRunWish;
    const auto add = [this](const char *keys, Wish wish, const std::function<void()> &otherwise = {}) {
        connect(new QShortcut(QKeySequence(QLatin1StringView(keys)), this), &QShortcut::activated, this,
            [this, wish, otherwise] {
                if (m_isFollowing)
                    Q_EMIT followedRunWished(wish);
                else if (otherwise && m_run->isVisibleTo(this))
                    otherwise();
            });
    };
    const auto step = [this] { m_step->click(); };
    add("F5", Wish::GoOn, [this] { m_run->click(); });
    add("F10", Wish::StepOver, step);
    add("F11", Wish::StepInto, step);
    add("Shift+F11", Wish::StepOut);
    add("Ctrl+F10", Wish::RunToCaret, [this] { Q_EMIT followRequested(FollowFrom::Caret); });
    add("F6", Wish::Hold);
    add("Shift+F5", Wish::Stop);
    connect(new QShortcut(QKeySequence(Qt::Key_F9), this), &QShortcut::activated, this,
        [this] { toggleBreakpoint(Text4->textCursor().blockNumber()); });
    connect(Text4, &ScriptEditor::breakpointWished, this, &EditPanel::toggleBreakpoint);
    connect(m_step, &PictureButton::clicked, this, [this] { Q_EMIT followRequested(FollowFrom::Entry); });
    connect(m_stepView, &StepView::wished, this, &EditPanel::followedRunWished);
    connect(m_stepView, &StepView::variableChanged, this, &EditPanel::heldVariableChanged);
}

// Only the script of an app is run from here.
void EditPanel::toggleBreakpoint(int line)
{
    if (!m_run->isVisibleTo(this))
        return;
    const std::optional<int> toggled = Text4->toggleBreakpoint(line);
    if (!toggled)
        say(tr("No line runs from here on."));
    else if (Text4->breakpoints().contains(*toggled))
        say(tr("Runs are held before line %1.").arg(*toggled + 1));
    else
        say(tr("No breakpoint in line %1 any more.").arg(*toggled + 1));
}

QList<int> EditPanel::breakpoints() const
{
    return Text4->breakpoints();
}

void EditPanel::keepBreakpoints()
{
    if (m_mode == Mode::Add || m_mode == Mode::Edit)
        m_breakpoints.insert(Text7->text(), Text4->breakpoints());
}

std::optional<int> EditPanel::runnableLineAtCaret() const
{
    return Text4->runnableLine(Text4->textCursor().blockNumber());
}

void EditPanel::beginFollowing()
{
    m_isFollowing = true;
    Text4->setLocked(true);
    for (PictureButton *button : m_restMeanwhile)
        button->setEnabled(false);
    Text4->setFocus();
    m_stepView->begin();
}

void EditPanel::showHeld(const HeldLine &held)
{
    Text4->setHeldLine(held.line);
    m_stepView->showHeld(held);
    m_heldWords = held.words;
    showNote();
    if (!m_stepView->isAncestorOf(focusWidget()))
        Text4->setFocus();
}

void EditPanel::showHeldValues(const HeldLine &held)
{
    m_stepView->showHeld(held);
}

void EditPanel::showGoing()
{
    m_heldWords.clear();
    showNote();
    m_stepView->showGoing();
}

void EditPanel::endFollowing()
{
    if (!std::exchange(m_isFollowing, false))
        return;
    const bool hadFocus = m_stepView->isAncestorOf(focusWidget());
    Text4->setHeldLine({});
    Text4->setLocked(false);
    m_stepView->hide();
    for (PictureButton *button : m_restMeanwhile)
        button->setEnabled(true);
    if (hadFocus)
        Text4->setFocus();
}

void EditPanel::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    // Not with the window, which comes back with it.
    if (isHidden()) {
        keepBreakpoints();
        Q_EMIT scriptLeft();
    }
}

} // namespace plum
