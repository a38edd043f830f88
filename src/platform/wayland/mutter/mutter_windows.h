#pragma once

#include "platform/desktop_windows.h"
#include "platform/wayland/mutter/desktop_extension.h"

#include <functional>

namespace plum {

class RemoteSession;

// The extension's word that some window has come, gone or changed its title.
class GnomeWindowNews final : public QObject, public News
{
    Q_OBJECT

public:
    explicit GnomeWindowNews(GnomeBus &bus);

    bool arrived() override { return std::exchange(m_hasArrived, false); }

public Q_SLOTS:
    void take() { m_hasArrived = true; }

private:
    bool m_hasArrived = true;
};

// Windows as Plum's extension drives them in the compositor. A hidden window is a minimised one that is in no
// list of Plum's.
class MutterWindows final : public Windows
{
public:
    // What `session` has sent reaches its window before any window is changed.
    MutterWindows(DesktopExtension &extension, RemoteSession &session)
        : m_extension(extension)
        , m_session(session)
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

private:
    std::optional<GnomeWindow> find(WindowHandle window);
    QRect change(const QString &method, WindowHandle window, const QVariantList &numbers = {});
    void waitUntil(WindowHandle window, const std::function<bool(const GnomeWindow &)> &condition);
    void waitForFocus(WindowHandle window);
    void waitForFrame(const GnomeWindow &before, const QRect &frame);

    DesktopExtension &m_extension;
    RemoteSession &m_session;
};

} // namespace plum
