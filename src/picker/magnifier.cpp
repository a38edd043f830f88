#include "picker/magnifier.h"

#include "picker/picker.h"

#include <QPainter>

namespace plum {

namespace {

constexpr int pixelsAcross = 21; // odd: one is in the middle
constexpr int pixelsDown = 11;
constexpr int magnified = 12; // the window's pixels for one of the desktop

} // namespace

Magnifier::Magnifier(const Picker &picker, QWidget *parent)
    : QWidget(parent)
    , m_picker(picker)
{
    setFixedSize(sizeHint());
}

QSize Magnifier::sizeHint() const
{
    return {pixelsAcross * magnified, pixelsDown * magnified};
}

void Magnifier::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const DesktopView &view = m_picker.view();
    const QPoint corner = m_picker.point() - QPoint(pixelsAcross / 2, pixelsDown / 2);
    for (int row = 0; row < pixelsDown; ++row) {
        for (int column = 0; column < pixelsAcross; ++column)
            painter.fillRect(column * magnified, row * magnified, magnified, magnified,
                QColor::fromRgb(view.colourAt(corner + QPoint(column, row))));
    }
    // Black around white is seen on every colour.
    const QRect middle(
        pixelsAcross / 2 * magnified, pixelsDown / 2 * magnified, magnified - 1, magnified - 1);
    painter.setPen(Qt::black);
    painter.drawRect(middle.adjusted(-1, -1, 1, 1));
    painter.setPen(Qt::white);
    painter.drawRect(middle);
}

} // namespace plum
