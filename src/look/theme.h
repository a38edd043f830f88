#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

namespace plum {

// The program's colours. Light or dark follows the palette that the desktop gives the application.
struct Theme
{
    QColor window;
    QColor field;
    QColor text;
    QColor quiet; // text of less weight, pictures at rest: 4.5 to 1, as all text
    QColor line; // decoration that nobody has to see
    QColor border; // where a control ends: 3 to 1 against whatever it stands on
    QColor hover;
    QColor accent;
    QColor onAccent;
    QColor comment;
    QColor string;
    QColor variable;
    QColor error; // marks in a script, as the next: 3 to 1
    QColor warning;
    QColor held; // behind the line before which a run is held
    bool isDark = false;

    static Theme of(const QPalette &palette);

    // For the windows of this program and everything in them.
    QString styleSheet() const;
};

} // namespace plum
