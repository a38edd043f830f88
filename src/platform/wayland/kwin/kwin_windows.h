#pragma once

#include "platform/desktop_windows.h"

#include <QJsonValue>

#include <functional>
#include <optional>
#include <sys/types.h>

namespace plum {

class KWinScripts;

// A window as KWin's scripts see it.
struct KWinWindow
{
    WindowHandle handle = 0;
    QString id; // KWin's own
    QString title;
    pid_t process = 0;
    QRect frame;
    QRect inside; // what the program draws
    bool isActive = false;
    bool isHidden = false; // see KWinWindows
    bool isMinimised = false; // hidden ones are, too
    bool isHere = false; // on the virtual desktop that the user sees
};

// Windows through scripts that run inside of KWin. A handle is a hash of the name by which KWin knows the
// window, the same in every process. KWin has no hidden windows: one that is hidden is minimised and left out
// of the task bar, the pager and the window switcher.
class KWinWindows final : public Windows
{
public:
    explicit KWinWindows(KWinScripts &scripts)
        : m_scripts(scripts)
    {
    }

    WindowHandle foreground() override;
    WindowHandle underPointer() override;
    WindowHandle byTitle(const QString &title) override;
    QString title(WindowHandle window) override;
    WindowHandle own(quintptr id) override;
    std::vector<WindowHandle> stacking() override;
    bool isOnScreen(WindowHandle window) override;
    QRect rectangle(WindowHandle window) override;
    void close(WindowHandle window) override;
    void activate(WindowHandle window) override;
    void hide(WindowHandle window) override;
    void show(WindowHandle window) override;
    void minimise(WindowHandle window) override;
    void maximise(WindowHandle window) override;
    void moveTo(WindowHandle window, QPoint corner) override;
    void bringHere(WindowHandle window) override;
    void setTopmost(WindowHandle window) override;
    std::unique_ptr<News> newsOfTitles() override;
    std::unique_ptr<News> newsOfEnd(WindowHandle window) override;

    // All windows, the one above all others first.
    std::vector<KWinWindow> all();

    // Where the pointer is; nothing when KWin does not answer.
    std::optional<QPoint> pointer();

private:
    QJsonValue evaluate(const QString &expression);
    std::optional<KWinWindow> find(const std::function<bool(const KWinWindow &)> &isIt);
    std::optional<KWinWindow> find(WindowHandle window);
    QRect change(const KWinWindow &window, const QString &call);
    void waitForFrame(WindowHandle window, const QRect &frame);

    KWinScripts &m_scripts;
};

} // namespace plum
