#pragma once

#include "look/theme.h"

#include <QWidget>

class QScreen;

namespace plum {

// What the program's own windows have in common: no frame of the desktop but a thin line of their own, the
// program's colours, which follow the palette, and a place in the middle of the main screen.
class BorderlessWindow : public QWidget
{
    Q_OBJECT

public:
    BorderlessWindow(QWidget *owner, Qt::WindowFlags flags);

    const Theme &theme() const { return m_theme; }

    // In the middle of the screen in use: the owner's while that is shown, else the one with the pointer.
    void wincenter();

    // `wanted`, or what that screen has room for.
    QSize fitting(QSize wanted) const;
    bool isNarrow(int wanted) const { return fitting({wanted, 1}).width() < wanted; }

Q_SIGNALS:
    void themeChanged(const plum::Theme &theme);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    QScreen *screenInUse() const;

private:
    void applyTheme();

    Theme m_theme;
};

} // namespace plum
