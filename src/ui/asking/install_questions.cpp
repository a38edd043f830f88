#include "ui/asking/install_questions.h"

#include "platform/desktop_windows.h"
#include "ui/asking/install_dialog.h"

#include <QTimer>

namespace plum {

namespace {

constexpr std::chrono::milliseconds focusPatience(150);

} // namespace

InstallQuestions::InstallQuestions(Windows &windows)
    : m_windows(windows)
{
}

InstallQuestions::~InstallQuestions()
{
    if (m_dialog)
        m_dialog->disconnect(this);
    delete m_dialog;
}

void InstallQuestions::ask(const InstallOffer &offer, std::function<void()> install)
{
    m_waiting.push_back({offer, std::move(install)});
    if (m_waiting.size() == 1)
        showFirst();
    else
        m_dialog->bringUp();
}

void InstallQuestions::showFirst()
{
    m_hasAgreed = false;
    m_dialog = new InstallDialog(m_waiting.front().offer);
    connect(m_dialog, &InstallDialog::agreed, this, [this] { m_hasAgreed = true; });
    connect(m_dialog, &InstallDialog::closed, this, &InstallQuestions::answered);
    connect(m_dialog, &InstallDialog::seen, this,
        [this] { QTimer::singleShot(focusPatience, this, &InstallQuestions::insistOnFocus); });
    m_dialog->bringUp();
}

// The user has just worked in another window, and a window manager that guards the focus lets no other
// program take it; the question is the answer to what was done there.
void InstallQuestions::insistOnFocus()
{
    if (m_dialog && m_dialog->isVisible() && !m_dialog->isActiveWindow())
        m_windows.activate(m_windows.own(m_dialog->winId()));
}

void InstallQuestions::answered()
{
    m_dialog.clear();
    const Question question = std::move(m_waiting.front());
    m_waiting.pop_front();
    const bool hasAgreed = m_hasAgreed;
    if (!m_waiting.empty())
        showFirst();
    // Not while the dialog is still closing: an install may have something to say first.
    if (hasAgreed)
        QMetaObject::invokeMethod(this, question.install, Qt::QueuedConnection);
}

} // namespace plum
