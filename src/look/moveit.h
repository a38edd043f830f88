#pragma once

#include <QObject>
#include <QPoint>

#include <optional>

class QWidget;

namespace plum {

// Lets a borderless window be dragged by the widgets that it is installed on: moving the mouse over one with
// the left button held moves the window, unless it is maximised.
class moveit final : public QObject
{
    Q_OBJECT

public:
    explicit moveit(QWidget &window);

    void installOn(QWidget &handle);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void drag(QPoint pointer);

    QWidget &m_window;
    std::optional<QPoint> m_grip; // where the pointer holds the window, from its corner
};

} // namespace plum
