#include "look/borderless_window.h"

#include "look/window_nodes.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace plum {

BorderlessWindow::BorderlessWindow(QWidget *owner, Qt::WindowFlags flags)
    : QWidget(owner, flags | Qt::FramelessWindowHint)
{
    describeWindows();
    applyTheme();
}

void BorderlessWindow::applyTheme()
{
    m_theme = Theme::of(QApplication::palette());
    setStyleSheet(m_theme.styleSheet());
    Q_EMIT themeChanged(m_theme);
}

void BorderlessWindow::changeEvent(QEvent *event)
{
    // Setting a style sheet sends such events too, so only a change of the theme may set one.
    if (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::PaletteChange) {
        if (Theme::of(QApplication::palette()).isDark != m_theme.isDark)
            applyTheme();
    }
    QWidget::changeEvent(event);
}

void BorderlessWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_theme.window);
    painter.setPen(m_theme.line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

QScreen *BorderlessWindow::screenInUse() const
{
    if (const QWidget *owner = parentWidget(); owner && owner->isVisible())
        return owner->window()->screen();
    QScreen *under = QGuiApplication::screenAt(QCursor::pos());
    return under ? under : QGuiApplication::primaryScreen();
}

void BorderlessWindow::wincenter()
{
    const QRect screen = screenInUse()->geometry();
    move(screen.x() + (screen.width() - width()) / 2, screen.y() + (screen.height() - height()) / 2);
}

QSize BorderlessWindow::fitting(QSize wanted) const
{
    return wanted.boundedTo(screenInUse()->availableSize());
}

} // namespace plum
