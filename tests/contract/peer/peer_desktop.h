#pragma once

#include "platform/desktop_windows.h"

#include <QRect>
#include <QString>
#include <QWidget>

#include <optional>

namespace plum::contract {

// A window as its own program and the system know it.
struct PeerView
{
    WindowHandle handle = 0;
    QRect frame; // as this system counts it
    QRect inside;
};

// Nothing while the system does not show the window.
std::optional<PeerView> viewOf(const QWidget &window);

// Puts the window's inside there, where a program may say so to its system alone, and not by Qt.
void place(const PeerView &window, const QRect &inside);

// The clipboard by other means than the port's: Qt's, or a program's where Qt needs a window with the
// keyboard.
QString clipboardText();
void setClipboardText(const QString &text);
void setClipboardPicture();

} // namespace plum::contract
