#include "contract/peer/peer_desktop.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include <qt_windows.h>

namespace plum::contract {

// Qt leaves the margins out by which a window is sized and of which nothing is seen.
std::optional<PeerView> viewOf(const QWidget &window)
{
    RECT area{};
    GetWindowRect(reinterpret_cast<HWND>(window.winId()), &area);
    return PeerView{static_cast<WindowHandle>(window.winId()),
        {area.left, area.top, area.right - area.left, area.bottom - area.top}, window.geometry()};
}

void place(const PeerView &, const QRect &)
{
}

QString clipboardText()
{
    return QGuiApplication::clipboard()->text();
}

void setClipboardText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

void setClipboardPicture()
{
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QGuiApplication::clipboard()->setImage(picture);
}

} // namespace plum::contract
