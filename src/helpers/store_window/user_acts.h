#pragma once

#include <QDeadlineTimer>
#include <QObject>

#include <functional>

class QWidget;

namespace plum {

// What a person does to a browser: the one thing that a page cannot make. What the browser engine calls a
// click may be a script's; an event that the window system brings to the browser's widgets is not. Each click
// or confirming key is good for one thing.
class UserActs final : public QObject
{
    Q_OBJECT

public:
    // `browser` gives the widget, or nothing while there is none.
    explicit UserActs(std::function<const QWidget *()> browser);

    // Whether the user did something a moment ago that nothing has been done for yet. It is used up by this.
    bool take();

    void forget() { m_until = QDeadlineTimer(0); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void note();
    bool isOnBrowser(const QObject &watched) const;

    const std::function<const QWidget *()> m_browser;
    QDeadlineTimer m_until{0};
};

} // namespace plum
