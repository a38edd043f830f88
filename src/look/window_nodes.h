#pragma once

class QWidget;

namespace plum {

// What assistive technology is told of this program's windows: a window is a window, a dialog a dialog, and
// below it stands what can be seen, open menus included. Needs no call for windows of `BorderlessWindow`.
void describeWindows();

// Leaves a widget out that is there for the eye alone.
void markAsDecoration(QWidget &widget);

} // namespace plum
