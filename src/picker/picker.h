#pragma once

#include "picker/picked_lines.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;

namespace plum {

class PickWindow;

// Lets somebody choose a point or a rectangle of the desktop, with the mouse or with keys alone: arrows go a
// pixel, with Shift ten, Space sets the first corner of a rectangle, Tab asks for another line, Enter takes
// and Esc gives up. The desktop stands still meanwhile, as it was when it was looked at.
class Picker final : public QObject
{
    Q_OBJECT

public:
    struct Wish
    {
        PickedLine line = PickedLine::Move;
        Edition edition = Edition::Two;
    };

    Picker(DesktopView view, Wish wish);
    ~Picker() override;
    Q_DISABLE_COPY_MOVE(Picker)

    // Shows the desktop on every screen, with the mark at `point`.
    void start(QPoint point);

    const DesktopView &view() const { return m_view; }
    QPoint point() const { return m_point; }

    // From the first corner to the point; nothing while there is no corner. What the mouse draws comes before
    // a corner that was set.
    std::optional<QRect> rectangle() const;

    // What is at the point, what Enter takes, and which keys there are.
    QString note() const;

    // What the windows pass on.
    void moveTo(QPoint point);
    void press(QPoint point);
    void release(QPoint point);
    void giveUp();
    bool takesKey(const QKeyEvent &event);

Q_SIGNALS:
    void pointTaken(const plum::PickedPoint &point, plum::PickedLine line);
    void rectangleTaken(const QRect &rectangle);
    void givenUp();

private:
    bool isDrawn() const;
    void take();
    void end();
    void show();

    DesktopView m_view;
    Wish m_wish;
    QPoint m_point;
    std::optional<QPoint> m_corner; // that was set
    std::optional<QPoint> m_pressed; // where the button that is down went down
    bool m_hasEnded = false;
    std::vector<std::unique_ptr<PickWindow>> m_windows;
};

} // namespace plum
