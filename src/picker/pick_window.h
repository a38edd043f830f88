#pragma once

#include "look/theme.h"

#include <QWidget>

class QLabel;

namespace plum {

class Magnifier;
class Picker;

// One screen of the desktop as it was: over it the mark, and beside the mark a card with what is there,
// magnified and in words.
class PickWindow final : public QWidget
{
    Q_OBJECT

public:
    PickWindow(Picker &picker, QScreen &screen);

    // Whether the mark is on this screen.
    bool hasPoint() const;

    void showChange();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool focusNextPrevChild(bool) override { return false; } // Tab has a meaning of its own
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QPoint toDesktop(QPointF place) const;
    QRectF fromDesktop(const QRect &part) const;
    void placeCard();

    Picker &m_picker;
    QPoint m_corner; // of the screen, in physical pixels of the desktop
    qreal m_scale; // pixels of the desktop for one of the window's
    QWidget *m_card;
    Magnifier *m_magnifier;
    QLabel *m_note;
};

} // namespace plum
