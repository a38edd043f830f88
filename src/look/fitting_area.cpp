#include "look/fitting_area.h"

#include <QEvent>
#include <QLayout>
#include <QVBoxLayout>

namespace plum {

FittingArea::FittingArea(QWidget *window)
    : QScrollArea(window)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(new QWidget);
    content()->setAccessibleName(window->windowTitle());
    // The window paints the ground.
    setStyleSheet(QStringLiteral("QScrollArea { background: transparent; }"));
    viewport()->setAutoFillBackground(false);
    content()->setAutoFillBackground(false);
    auto *layout = new QVBoxLayout(window);
    layout->setContentsMargins(1, 1, 1, 1); // the window's frame
    layout->addWidget(this);
}

QSize FittingArea::sizeHint() const
{
    QSize size = content()->sizeHint();
    // Texts that wrap are as high as the width wants.
    if (const QLayout *layout = content()->layout(); layout && layout->hasHeightForWidth())
        size.setHeight(layout->totalHeightForWidth(size.width()));
    return size;
}

} // namespace plum
