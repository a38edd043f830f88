#include "ui/launcher_news.h"

#include "ui/controls/footer.h"
#include "ui/controls/passing_note.h"
#include "ui/frm_set.h"
#include "ui/sett.h"

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

LauncherNews::LauncherNews(std::function<void(const QString &line)> report)
    : m_report(std::move(report))
{
}

void LauncherNews::useWindow(frmSet &window, std::function<sett *()> madeMenus)
{
    m_window = &window;
    m_madeMenus = std::move(madeMenus);
}

void LauncherNews::showUpdates(int apps)
{
    if (m_window)
        m_window->footer().setUpdates(apps);
}

void LauncherNews::showDownload(std::optional<int> percent)
{
    const QString text = percent ? tr("Downloading, %1 %").arg(*percent) : QString();
    if (m_window)
        m_window->footer().setDownload(text);
    if (sett *menus = m_madeMenus())
        menus->setDownload(text);
}

void LauncherNews::sayNotInstalled(const QString &keyword)
{
    if (m_window)
        m_window->footer().say(tr("%1 was not installed").arg(keyword));
}

void LauncherNews::sayUpdated(int apps)
{
    if (m_window && apps > 0)
        m_window->footer().say(apps == 1 ? tr("1 app updated") : tr("%1 apps updated").arg(apps));
}

void LauncherNews::sayRefused(const QString &sentence)
{
    m_report(sentence);
    if (m_window)
        m_window->footer().say(sentence);
}

// The launcher's own display says it by itself.
void LauncherNews::sayPause(const QString &script, InputPause pause)
{
    if (m_window)
        return;
    const QString what = pause.reason == InputPause::Reason::Hand
        ? tr("waits while you use the mouse or the keyboard, and 1.5 seconds more")
        : tr("waits until its window is in front again");
    m_report(u"%1 %2"_s.arg(script, what));
}

void LauncherNews::sayNotStarted()
{
    if (m_window)
        m_window->footer().say(tr("Not started: too many runs wait for each other already."));
}

void LauncherNews::sayFailed()
{
    if (m_window)
        m_window->footer().sayFailed(tr("A run has failed."));
}

void LauncherNews::sayStopped(const RunStopped::Place &where)
{
    if (!m_window)
        return;
    const QString text = tr("%1: stopped at line %2").arg(where.keyword).arg(where.line + 1);
    m_window->footer().sayStopped(text, where.file.isEmpty());
    if (!m_window->isVisible())
        PassingNote::tell(text);
}

void LauncherNews::sayHowToReturn()
{
    if (!m_window || m_window->isVisible() || std::exchange(m_saidHowToReturn, true))
        return;
    const QString text = tr("Plum is hidden. Start it again to bring it back, and choose a hotkey there.");
    m_report(text);
    PassingNote::tell(text);
}

} // namespace plum
