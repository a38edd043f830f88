#pragma once

#include "platform/desktop_windows.h"
#include "platform/screen.h"

#include <QHash>
#include <QImage>
#include <QString>

#include <optional>
#include <vector>

class QScreen;

namespace plum {

// The desktop as it was at one moment: its picture, what a search sees of it, and the windows in it.
class DesktopView
{
public:
    struct SeenWindow
    {
        WindowHandle handle = 0;
        QRect rectangle; // with its frame
        QString title;
    };

    // Nothing without a desktop, or where the system gives nobody its picture.
    static std::optional<DesktopView> take(Screen &screen, Windows &windows);

    // In physical pixels of the whole desktop, as everything here.
    QRect desktop() const { return m_desktop; }
    const QImage &picture() const { return m_picture; } // its corner is the desktop's

    QRgb colourAt(QPoint point) const;

    // How many of those pixels one of Qt's own is on a screen.
    qreal pixelsOfUnit(const QScreen &screen) const;

    // The uppermost window at a point; null over the bare desktop.
    const SeenWindow *windowAt(QPoint point) const;

    // What a search for a picture looks at that names no region: the main screen, without the windows that
    // the system blends over the others.
    const QImage &searched() const { return m_searched; }

private:
    QRect m_desktop;
    QHash<const QScreen *, qreal> m_units;
    QImage m_picture;
    QImage m_searched;
    std::vector<SeenWindow> m_windows; // the uppermost first
};

} // namespace plum
