#include "picker/desktop_view.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace plum {

namespace {

// The memory of a capture is the screen's: a copy stays.
QImage copyOf(const Capture &seen)
{
    return QImage(reinterpret_cast<const uchar *>(seen.pixels.data()), seen.size.width(), seen.size.height(),
        QImage::Format_RGB32)
        .copy();
}

} // namespace

std::optional<DesktopView> DesktopView::take(Screen &screen, Windows &windows)
{
    DesktopView view;
    view.m_desktop = screen.desktop();
    const Capture seen = screen.capture(view.m_desktop);
    if (seen.isEmpty() || seen.size != view.m_desktop.size())
        return {};
    view.m_picture = copyOf(seen);
    if (const Capture plain = screen.capturePlainly({QPoint(), screen.mainScreenSize()}); !plain.isEmpty())
        view.m_searched = copyOf(plain);
    for (const QScreen *each : QGuiApplication::screens())
        view.m_units.insert(each, screen.pixelsOfUnit(each->geometry(), each->devicePixelRatio()));
    for (const WindowHandle window : windows.stacking()) {
        if (windows.isOnScreen(window))
            view.m_windows.push_back({window, windows.rectangle(window), windows.title(window)});
    }
    return view;
}

qreal DesktopView::pixelsOfUnit(const QScreen &screen) const
{
    return m_units.value(&screen, screen.devicePixelRatio());
}

QRgb DesktopView::colourAt(QPoint point) const
{
    const QPoint at = point - m_desktop.topLeft();
    return m_picture.valid(at) ? m_picture.pixel(at) : qRgb(0, 0, 0);
}

const DesktopView::SeenWindow *DesktopView::windowAt(QPoint point) const
{
    const auto isThere = [point](const SeenWindow &window) { return window.rectangle.contains(point); };
    const auto found = std::ranges::find_if(m_windows, isThere);
    return found == m_windows.end() ? nullptr : &*found;
}

} // namespace plum
